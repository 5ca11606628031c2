// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace K7R
{

/** Ids of the parameters that the framework adds to every product's table. */
namespace frameworkIds
{

enum : int
{
    presetName = 100000,
    realTimeQuality = 100001,
    defaultRealTimeQuality = 100002,
    offlineQuality = 100003,
    defaultOfflineQuality = 100004,

    firstDebugParameter = 300000,
};

} // namespace frameworkIds

/** Numbers of the commands that every product has; skins and maps refer to them. */
namespace eventIds
{

enum : int
{
    options = 1000,
    about,
    selectNextPreset,
    selectPreviousPreset,
    browsePresets,
    savePreset,
    savePresetAs,
    copyCurrentPreset,
    pasteCopiedPreset,
    storeCurrentPreset,
    toggleMidiLearn,
    restoreDefaultPreset,
    restoreCurrentPreset,

    firstDebugEvent = 10000,
};

} // namespace eventIds

} // namespace K7R
