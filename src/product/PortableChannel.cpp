// SPDX-License-Identifier: GPL-3.0-or-later

// Takes the place of the library's channel in a plug-in that brings this file along.

#define QUILVANE_CHANNEL "portable"
#include "product/ReleaseChannel.cpp" // NOLINT(bugprone-suspicious-include): compiled with the other channel
