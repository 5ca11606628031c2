// SPDX-License-Identifier: GPL-3.0-or-later

// The VST 2.4 binary interface, first half: the effect record, its function types and the
// operations that every plug-in answers.
//
// Layouts are the platform's natural ones on 64-bit systems. JUCE includes this file inside a
// namespace of its own, so it includes nothing itself.

#pragma once

#define VSTCALLBACK

using VstInt32 = int;
using VstIntPtr = long long;

// The interface is only described for platforms on which a pointer has 64 bits.
static_assert (sizeof (void*) == 8 && sizeof (VstIntPtr) == 8 && sizeof (VstInt32) == 4, "64-bit platforms only");

struct AEffect;

using audioMasterCallback = VstIntPtr (VSTCALLBACK*) (AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt);
using AEffectDispatcherProc = VstIntPtr (VSTCALLBACK*) (AEffect*, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr, float opt);
using AEffectProcessProc = void (VSTCALLBACK*) (AEffect*, float** inputs, float** outputs, VstInt32 numSamples);
using AEffectProcessDoubleProc = void (VSTCALLBACK*) (AEffect*, double** inputs, double** outputs, VstInt32 numSamples);
using AEffectSetParameterProc = void (VSTCALLBACK*) (AEffect*, VstInt32 index, float value);
using AEffectGetParameterProc = float (VSTCALLBACK*) (AEffect*, VstInt32 index);

/** What the plug-in hands to the host: its entry points and its properties. */
struct AEffect
{
    VstInt32 magic; // kEffectMagic
    AEffectDispatcherProc dispatcher;
    AEffectProcessProc process; // obsolete, accumulating
    AEffectSetParameterProc setParameter;
    AEffectGetParameterProc getParameter;

    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;
    VstInt32 numOutputs;
    VstInt32 flags; // VstAEffectFlags

    VstIntPtr resvd1; // the host's
    VstIntPtr resvd2; // the host's

    VstInt32 initialDelay; // samples
    VstInt32 realQualities;
    VstInt32 offQualities;
    float ioRatio;

    void* object; // the plug-in's
    void* user;   // the host's

    VstInt32 uniqueID;
    VstInt32 version;

    AEffectProcessProc processReplacing;
    AEffectProcessDoubleProc processDoubleReplacing;

    char future[56];
};

static_assert (sizeof (AEffect) == 192, "the effect record has 192 bytes");

/** The editor's bounds, in pixels. */
struct ERect
{
    short top, left, bottom, right;
};

static_assert (sizeof (ERect) == 8, "four 16-bit numbers");

constexpr VstInt32 kEffectMagic = 0x56737450;   // "VstP"
constexpr VstIntPtr kEffectIdentify = 0x4e764566; // "NvEf", the answer to effIdentify

enum VstAEffectFlags
{
    effFlagsHasEditor          = 1 << 0,
    effFlagsCanReplacing       = 1 << 4,
    effFlagsProgramChunks      = 1 << 5,
    effFlagsIsSynth            = 1 << 8,
    effFlagsNoSoundInStop      = 1 << 9,
    effFlagsCanDoubleReplacing = 1 << 12,
};

// What a host asks of a plug-in, the first generation of operations.
enum AEffectOpcodes
{
    effOpen            = 0,
    effClose           = 1,
    effSetProgram      = 2,
    effGetProgram      = 3,
    effSetProgramName  = 4,
    effGetProgramName  = 5,
    effGetParamLabel   = 6,
    effGetParamDisplay = 7,
    effGetParamName    = 8,
    effGetVu           = 9,
    effSetSampleRate   = 10,
    effSetBlockSize    = 11,
    effMainsChanged    = 12,
    effEditGetRect     = 13,
    effEditOpen        = 14,
    effEditClose       = 15,
    effEditDraw        = 16,
    effEditMouse       = 17,
    effEditKey         = 18,
    effEditIdle        = 19,
    effEditTop         = 20,
    effEditSleep       = 21,
    effIdentify        = 22,
    effGetChunk        = 23,
    effSetChunk        = 24,
};
