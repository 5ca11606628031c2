// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/** The ids of the phaser's parameters, which are the indexes of its parameter table. */
namespace quilvane::parameterIds
{

enum : int
{
    lfo1Sync = 0,
    lfo1Rate,
    lfo1NoteRate,
    lfo1NoteScale,
    lfo1Waveform,
    lfo2Sync,
    lfo2Rate,
    lfo2NoteRate,
    lfo2NoteScale,
    lfo2Waveform,
    lfo1Depth,
    lfo2Depth,
    centerFrequency,
    stereoPhaseId,
    stagesNumber,
    feedback,
    fx,
    outputVolume,

    /** How many of them a host sees and a preset keeps. */
    numPresetParameters,

    processingQuality = numPresetParameters,
};

} // namespace quilvane::parameterIds
