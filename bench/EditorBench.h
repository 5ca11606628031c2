// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/** Prints how long the editor takes to open and to change its skin, what it costs while it's open, and what it holds.
    The costs of an open window need a display. */
void printEditorFigures();
