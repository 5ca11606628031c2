// SPDX-License-Identifier: GPL-3.0-or-later

// The VST 2.4 binary interface, second half: events, time, speakers and pins, and the operations
// of the later generations.

#pragma once

#include "aeffect.h"

#define kVstVersion 2400

// What a plug-in asks of a host.
enum AudioMasterOpcodes
{
    audioMasterAutomate     = 0,
    audioMasterVersion      = 1,
    audioMasterCurrentId    = 2,
    audioMasterIdle         = 3,
    audioMasterPinConnected = 4,
};

enum AudioMasterOpcodesX
{
    audioMasterWantMidi                    = 6,
    audioMasterGetTime                     = 7,
    audioMasterProcessEvents               = 8,
    audioMasterSetTime                     = 9,
    audioMasterTempoAt                     = 10,
    audioMasterGetNumAutomatableParameters = 11,
    audioMasterGetParameterQuantization    = 12,
    audioMasterIOChanged                   = 13,
    audioMasterNeedIdle                    = 14,
    audioMasterSizeWindow                  = 15,
    audioMasterGetSampleRate               = 16,
    audioMasterGetBlockSize                = 17,
    audioMasterGetInputLatency             = 18,
    audioMasterGetOutputLatency            = 19,
    audioMasterGetPreviousPlug             = 20,
    audioMasterGetNextPlug                 = 21,
    audioMasterWillReplaceOrAccumulate     = 22,
    audioMasterGetCurrentProcessLevel      = 23,
    audioMasterGetAutomationState          = 24,
    audioMasterOfflineStart                = 25,
    audioMasterOfflineRead                 = 26,
    audioMasterOfflineWrite                = 27,
    audioMasterOfflineGetCurrentPass       = 28,
    audioMasterOfflineGetCurrentMetaPass   = 29,
    audioMasterSetOutputSampleRate         = 30,
    audioMasterGetOutputSpeakerArrangement = 31,
    audioMasterGetVendorString             = 32,
    audioMasterGetProductString            = 33,
    audioMasterGetVendorVersion            = 34,
    audioMasterVendorSpecific              = 35,
    audioMasterSetIcon                     = 36,
    audioMasterCanDo                       = 37,
    audioMasterGetLanguage                 = 38,
    audioMasterOpenWindow                  = 39,
    audioMasterCloseWindow                 = 40,
    audioMasterGetDirectory                = 41,
    audioMasterUpdateDisplay               = 42,
    audioMasterBeginEdit                   = 43,
    audioMasterEndEdit                     = 44,
    audioMasterOpenFileSelector            = 45,
    audioMasterCloseFileSelector           = 46,
    audioMasterEditFile                    = 47,
    audioMasterGetChunkFile                = 48,
    audioMasterGetInputSpeakerArrangement  = 49,
};

// What a host asks of a plug-in, the later generations of operations.
enum AEffectXOpcodes
{
    effProcessEvents             = 25,
    effCanBeAutomated            = 26,
    effString2Parameter          = 27,
    effGetNumProgramCategories   = 28,
    effGetProgramNameIndexed     = 29,
    effCopyProgram               = 30,
    effConnectInput              = 31,
    effConnectOutput             = 32,
    effGetInputProperties        = 33,
    effGetOutputProperties       = 34,
    effGetPlugCategory           = 35,
    effGetCurrentPosition        = 36,
    effGetDestinationBuffer      = 37,
    effOfflineNotify             = 38,
    effOfflinePrepare            = 39,
    effOfflineRun                = 40,
    effProcessVarIo              = 41,
    effSetSpeakerArrangement     = 42,
    effSetBlockSizeAndSampleRate = 43,
    effSetBypass                 = 44,
    effGetEffectName             = 45,
    effGetErrorText              = 46,
    effGetVendorString           = 47,
    effGetProductString          = 48,
    effGetVendorVersion          = 49,
    effVendorSpecific            = 50,
    effCanDo                     = 51,
    effGetTailSize               = 52,
    effIdle                      = 53,
    effGetIcon                   = 54,
    effSetViewPosition           = 55,
    effGetParameterProperties    = 56,
    effKeysRequired              = 57,
    effGetVstVersion             = 58,
    effEditKeyDown               = 59,
    effEditKeyUp                 = 60,
    effSetEditKnobMode           = 61,
    effGetMidiProgramName        = 62,
    effGetCurrentMidiProgram     = 63,
    effGetMidiProgramCategory    = 64,
    effHasMidiProgramsChanged    = 65,
    effGetMidiKeyName            = 66,
    effBeginSetProgram           = 67,
    effEndSetProgram             = 68,
    effGetSpeakerArrangement     = 69,
    effShellGetNextPlugin        = 70,
    effStartProcess              = 71,
    effStopProcess               = 72,
    effSetTotalSampleToProcess   = 73,
    effSetPanLaw                 = 74,
    effBeginLoadBank             = 75,
    effBeginLoadProgram          = 76,
    effSetProcessPrecision       = 77,
    effGetNumMidiInputChannels   = 78,
    effGetNumMidiOutputChannels  = 79,
};

//==============================================================================
enum VstEventTypes
{
    kVstMidiType  = 1,
    kVstSysExType = 6,
};

enum VstMidiEventFlags
{
    kVstMidiEventIsRealtime = 1 << 0,
};

/** The head that all events share; the type says what it really is. */
struct VstEvent
{
    VstInt32 type;
    VstInt32 byteSize;
    VstInt32 deltaFrames; // samples from the start of the block
    VstInt32 flags;
    char data[16];
};

/** A list of events; numEvents pointers follow, of which the declaration shows two. */
struct VstEvents
{
    VstInt32 numEvents;
    VstIntPtr reserved;
    VstEvent* events[2];
};

struct VstMidiEvent
{
    VstInt32 type; // kVstMidiType
    VstInt32 byteSize;
    VstInt32 deltaFrames;
    VstInt32 flags; // VstMidiEventFlags
    VstInt32 noteLength;
    VstInt32 noteOffset;
    char midiData[4];
    char detune;
    char noteOffVelocity;
    char reserved1;
    char reserved2;
};

struct VstMidiSysexEvent
{
    VstInt32 type; // kVstSysExType
    VstInt32 byteSize;
    VstInt32 deltaFrames;
    VstInt32 flags;
    VstInt32 dumpBytes;
    VstIntPtr resvd1;
    char* sysexDump;
    VstIntPtr resvd2;
};

static_assert (sizeof (VstEvent) == 32 && sizeof (VstMidiEvent) == 32 && sizeof (VstMidiSysexEvent) == 48, "event layouts");

//==============================================================================
/** Transport and tempo, as the host answers audioMasterGetTime. */
struct VstTimeInfo
{
    double samplePos;
    double sampleRate;  // Hz
    double nanoSeconds; // system time
    double ppqPos;      // quarter notes
    double tempo;       // beats per minute
    double barStartPos;
    double cycleStartPos;
    double cycleEndPos;
    VstInt32 timeSigNumerator;
    VstInt32 timeSigDenominator;
    VstInt32 smpteOffset;
    VstInt32 smpteFrameRate; // VstSmpteFrameRate
    VstInt32 samplesToNextClock;
    VstInt32 flags; // VstTimeInfoFlags
};

static_assert (sizeof (VstTimeInfo) == 88, "time layout");

enum VstTimeInfoFlags
{
    kVstTransportChanged     = 1 << 0,
    kVstTransportPlaying     = 1 << 1,
    kVstTransportCycleActive = 1 << 2,
    kVstTransportRecording   = 1 << 3,
    kVstAutomationWriting    = 1 << 6,
    kVstAutomationReading    = 1 << 7,
    kVstNanosValid           = 1 << 8,
    kVstPpqPosValid          = 1 << 9,
    kVstTempoValid           = 1 << 10,
    kVstBarsValid            = 1 << 11,
    kVstCyclePosValid        = 1 << 12,
    kVstTimeSigValid         = 1 << 13,
    kVstSmpteValid           = 1 << 14,
    kVstClockValid           = 1 << 15,
};

enum VstSmpteFrameRate
{
    kVstSmpte24fps    = 0,
    kVstSmpte25fps    = 1,
    kVstSmpte2997fps  = 2,
    kVstSmpte30fps    = 3,
    kVstSmpte2997dfps = 4,
    kVstSmpte30dfps   = 5,
    kVstSmpteFilm16mm = 6,
    kVstSmpteFilm35mm = 7,
    kVstSmpte239fps   = 10,
    kVstSmpte249fps   = 11,
    kVstSmpte599fps   = 12,
    kVstSmpte60fps    = 13,
};

enum VstProcessLevels
{
    kVstProcessLevelUnknown  = 0,
    kVstProcessLevelUser     = 1,
    kVstProcessLevelRealtime = 2,
    kVstProcessLevelPrefetch = 3,
    kVstProcessLevelOffline  = 4,
};

enum VstAutomationStates
{
    kVstAutomationUnsupported = 0,
    kVstAutomationOff         = 1,
    kVstAutomationRead        = 2,
    kVstAutomationWrite       = 3,
    kVstAutomationReadWrite   = 4,
};

enum VstProcessPrecision
{
    kVstProcessPrecision32 = 0,
    kVstProcessPrecision64 = 1,
};

enum VstHostLanguage
{
    kVstLangEnglish = 1,
};

enum VstPlugCategory
{
    kPlugCategUnknown        = 0,
    kPlugCategEffect         = 1,
    kPlugCategSynth          = 2,
    kPlugCategAnalysis       = 3,
    kPlugCategMastering      = 4,
    kPlugCategSpacializer    = 5,
    kPlugCategRoomFx         = 6,
    kPlugSurroundFx          = 7,
    kPlugCategRestoration    = 8,
    kPlugCategOfflineProcess = 9,
    kPlugCategShell          = 10,
    kPlugCategGenerator      = 11,
    kPlugCategMaxCount       = 12,
};

// Room for texts, in bytes. Hosts give parameter texts at least 24.
enum VstStringConstants
{
    kVstMaxProgNameLen    = 24,
    kVstMaxParamStrLen    = 8,
    kVstMaxVendorStrLen   = 64,
    kVstMaxProductStrLen  = 64,
    kVstMaxEffectNameLen  = 32,
    kVstMaxNameLen        = 64,
    kVstMaxLabelLen       = 64,
    kVstMaxShortLabelLen  = 8,
    kVstMaxCategLabelLen  = 24,
    kVstMaxFileNameLen    = 100,
};

//==============================================================================
struct VstSpeakerProperties
{
    float azimuth;
    float elevation;
    float radius;
    float reserved;
    char name[64];
    VstInt32 type; // VstSpeakerType
    char future[28];
};

struct VstSpeakerArrangement
{
    VstInt32 type; // VstSpeakerArrangementType
    VstInt32 numChannels;
    VstSpeakerProperties speakers[8];
};

static_assert (sizeof (VstSpeakerProperties) == 112 && sizeof (VstSpeakerArrangement) == 904, "speaker layouts");

enum VstSpeakerArrangementType
{
    kSpeakerArrUserDefined    = -2,
    kSpeakerArrEmpty          = -1,
    kSpeakerArrMono           = 0,
    kSpeakerArrStereo         = 1,
    kSpeakerArrStereoSurround = 2,
    kSpeakerArrStereoCenter   = 3,
    kSpeakerArrStereoSide     = 4,
    kSpeakerArrStereoCLfe     = 5,
    kSpeakerArr30Cine         = 6,
    kSpeakerArr30Music        = 7,
    kSpeakerArr31Cine         = 8,
    kSpeakerArr31Music        = 9,
    kSpeakerArr40Cine         = 10,
    kSpeakerArr40Music        = 11,
    kSpeakerArr41Cine         = 12,
    kSpeakerArr41Music        = 13,
    kSpeakerArr50             = 14,
    kSpeakerArr51             = 15,
    kSpeakerArr60Cine         = 16,
    kSpeakerArr60Music        = 17,
    kSpeakerArr61Cine         = 18,
    kSpeakerArr61Music        = 19,
    kSpeakerArr70Cine         = 20,
    kSpeakerArr70Music        = 21,
    kSpeakerArr71Cine         = 22,
    kSpeakerArr71Music        = 23,
    kSpeakerArr80Cine         = 24,
    kSpeakerArr80Music        = 25,
    kSpeakerArr81Cine         = 26,
    kSpeakerArr81Music        = 27,
    kSpeakerArr102            = 28,
};

enum VstSpeakerType
{
    kSpeakerUndefined = 0x7fffffff,
    kSpeakerM         = 0,
    kSpeakerL         = 1,
    kSpeakerR         = 2,
    kSpeakerC         = 3,
    kSpeakerLfe       = 4,
    kSpeakerLs        = 5,
    kSpeakerRs        = 6,
    kSpeakerLc        = 7,
    kSpeakerRc        = 8,
    kSpeakerS         = 9,
    kSpeakerSl        = 10,
    kSpeakerSr        = 11,
    kSpeakerTm        = 12,
    kSpeakerTfl       = 13,
    kSpeakerTfc       = 14,
    kSpeakerTfr       = 15,
    kSpeakerTrl       = 16,
    kSpeakerTrc       = 17,
    kSpeakerTrr       = 18,
    kSpeakerLfe2      = 19,
};

//==============================================================================
/** One input or output channel. */
struct VstPinProperties
{
    char label[64];
    VstInt32 flags; // VstPinPropertiesFlags
    VstInt32 arrangementType;
    char shortLabel[8];
    char future[48];
};

static_assert (sizeof (VstPinProperties) == 128, "pin layout");

enum VstPinPropertiesFlags
{
    kVstPinIsActive   = 1 << 0,
    kVstPinIsStereo   = 1 << 1,
    kVstPinUseSpeaker = 1 << 2,
};
