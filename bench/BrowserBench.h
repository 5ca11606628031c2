// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/** Prints what the preset browser's user waits for with very many presets of his own. */
void printBrowserFigures();
