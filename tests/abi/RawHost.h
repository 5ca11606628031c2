// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace rawhost
{

/** The effect record of the binary interface, declared here once more, on purpose: these tests ask
    the plug-in by raw numbers and share no header with it. */
struct Effect
{
    int32_t magic;
    intptr_t (*dispatcher) (Effect*, int32_t, int32_t, intptr_t, void*, float);
    void (*process) (Effect*, float**, float**, int32_t);
    void (*setParameter) (Effect*, int32_t, float);
    float (*getParameter) (Effect*, int32_t);
    int32_t numPrograms, numParams, numInputs, numOutputs, flags;
    intptr_t reserved1, reserved2;
    int32_t initialDelay, realQualities, offQualities;
    float ioRatio;
    void* object;
    void* user;
    int32_t uniqueId, version;
    void (*processReplacing) (Effect*, float**, float**, int32_t);
    void (*processDoubleReplacing) (Effect*, double**, double**, int32_t);
    char future[56];
};

static_assert (sizeof (Effect) == 192);

/** The transport record that a host answers to operation 7. */
struct TimeInfo
{
    double samplePos = 0.0, sampleRate = 48000.0, nanoSeconds = 0.0, ppqPos = 0.0, tempo = 120.0;
    double barStartPos = 0.0, cycleStartPos = 0.0, cycleEndPos = 0.0;
    int32_t numerator = 4, denominator = 4, smpteOffset = 0, smpteFrameRate = 0, samplesToNextClock = 0, flags = 0;
};

static_assert (sizeof (TimeInfo) == 88);

struct MidiEvent
{
    int32_t type = 1, byteSize = 32, deltaFrames = 0, flags = 0, noteLength = 0, noteOffset = 0;
    unsigned char data[4] {};
    char detune = 0, noteOffVelocity = 0, reserved1 = 0, reserved2 = 0;
};

static_assert (sizeof (MidiEvent) == 32);

// Operations of the plug-in.
enum : int32_t
{
    effOpen = 0,
    effClose = 1,
    effGetParamDisplay = 7,
    effGetParamName = 8,
    effSetSampleRate = 10,
    effSetBlockSize = 11,
    effMainsChanged = 12,
    effEditGetRect = 13,
    effEditOpen = 14,
    effEditClose = 15,
    effEditIdle = 19,
    effGetChunk = 23,
    effSetChunk = 24,
    effProcessEvents = 25,
    effCanBeAutomated = 26,
    effGetPlugCategory = 35,
    effSetBypass = 44,
    effGetEffectName = 45,
    effGetVendorString = 47,
    effGetProductString = 48,
    effCanDo = 51,
    effGetTailSize = 52,
    effGetVstVersion = 58,
};

// Operations of the host.
enum : int32_t
{
    hostAutomate = 0,
    hostVersion = 1,
    hostGetTime = 7,
    hostSizeWindow = 15,
    hostGetProcessLevel = 23,
    hostCanDo = 37,
    hostBeginEdit = 43,
    hostEndEdit = 44,
};

// Flags of TimeInfo.
enum : int32_t
{
    transportPlaying = 1 << 1,
    ppqValid = 1 << 9,
    tempoValid = 1 << 10,
};

/** The shared library, open as long as the object lives. */
class Library
{
public:
    explicit Library (const std::string& path);
    ~Library();

    Library (const Library&) = delete;
    Library& operator= (const Library&) = delete;

    /** Whether the process holds the library at this time. */
    static bool isLoaded (const std::string& path);

    bool isOpen() const { return handle != nullptr; }
    void* find (const char* symbol) const;

private:
    void* handle;
};

/** One instance in a host that answers as a simple one would, and keeps what it hears. */
class Instance
{
public:
    /** A value or an end of a gesture that the plug-in told the host. */
    struct Automation
    {
        int operation; // hostAutomate, hostBeginEdit or hostEndEdit
        int index;
        float value; // 0 but with hostAutomate
    };

    Instance (const Library&, double sampleRate = 48000.0, int blockSize = 512);
    ~Instance();

    Instance (const Instance&) = delete;
    Instance& operator= (const Instance&) = delete;

    bool isOpen() const { return effect != nullptr; }
    Effect& get() { return *effect; }

    intptr_t dispatch (int32_t operation, int32_t index = 0, intptr_t value = 0, void* pointer = nullptr,
                       float option = 0.0f);

    /** The text that an operation writes. */
    std::string text (int32_t operation, int32_t index = 0);

    void set (int index, float value) { effect->setParameter (effect, index, value); }
    float value (int index) { return effect->getParameter (effect, index); }

    void suspend() { dispatch (effMainsChanged, 0, 0); }
    void resume() { dispatch (effMainsChanged, 0, 1); }

    /** Processes both channels, in blocks of the instance's size, and moves the transport on. */
    void process (std::vector<float>& left, std::vector<float>& right);

    /** Gives events to the next block. */
    void sendMidi (std::vector<MidiEvent> events);

    std::vector<char> getChunk();
    void setChunk (std::vector<char> chunk);

    /** What the host heard of parameters so far, in order. The plug-in may tell it from threads of its own. */
    std::vector<Automation> getAutomations() const;
    void clearAutomations();

    // What the host answers.
    TimeInfo time;
    bool answersTime = false;
    int processLevel = 2; // real time; 4 is offline
    bool keepsAutomations = true;

    /** A lock that the host takes for what it's told of parameters; null for none. */
    std::mutex* hostLock = nullptr;

    /** How the host gives its window another size; a host without it can't. */
    std::function<void (int width, int height)> resizeWindow;

private:
    static intptr_t hostCallback (Effect*, int32_t operation, int32_t index, intptr_t value, void*, float option);
    intptr_t answer (int32_t operation, int32_t index, intptr_t value, const void* pointer, float option);

    Effect* effect = nullptr;
    int blockSize;

    mutable std::mutex automationsLock;
    std::vector<Automation> automations;
};

} // namespace rawhost
