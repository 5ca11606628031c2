// SPDX-License-Identifier: GPL-3.0-or-later

#include "RawHost.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>

namespace rawhost
{

Library::Library (const std::string& path) : handle (dlopen (path.c_str(), RTLD_NOW | RTLD_LOCAL)) {}

Library::~Library()
{
    if (handle != nullptr)
        dlclose (handle);
}

bool Library::isLoaded (const std::string& path)
{
    auto* loaded = dlopen (path.c_str(), RTLD_NOW | RTLD_NOLOAD);

    if (loaded == nullptr)
        return false;

    dlclose (loaded);
    return true;
}

void* Library::find (const char* symbol) const
{
    return dlsym (handle, symbol);
}

//==============================================================================
Instance::Instance (const Library& library, double sampleRate, int size) : blockSize (size)
{
    using Callback = intptr_t (*) (Effect*, int32_t, int32_t, intptr_t, void*, float);
    using Entry = Effect* (*) (Callback);

    const auto entry = reinterpret_cast<Entry> (library.find ("VSTPluginMain"));
    effect = entry != nullptr ? entry (&hostCallback) : nullptr;

    if (effect == nullptr)
        return;

    effect->user = this;
    time.sampleRate = sampleRate;
    dispatch (effOpen);
    dispatch (effSetSampleRate, 0, 0, nullptr, static_cast<float> (sampleRate));
    dispatch (effSetBlockSize, 0, blockSize);
    resume();
}

Instance::~Instance()
{
    if (effect == nullptr)
        return;

    suspend();
    dispatch (effClose);
}

intptr_t Instance::dispatch (int32_t operation, int32_t index, intptr_t value, void* pointer, float option)
{
    return effect->dispatcher (effect, operation, index, value, pointer, option);
}

std::string Instance::text (int32_t operation, int32_t index)
{
    char buffer[256] {};
    dispatch (operation, index, 0, buffer);
    return buffer;
}

void Instance::process (std::vector<float>& left, std::vector<float>& right)
{
    const auto total = static_cast<int> (left.size());

    for (int start = 0; start < total; start += blockSize)
    {
        const auto size = std::min (blockSize, total - start);
        float* channels[] { left.data() + start, right.data() + start };
        effect->processReplacing (effect, channels, channels, size);

        time.samplePos += size;

        if ((time.flags & transportPlaying) != 0)
            time.ppqPos += size * time.tempo / (60.0 * time.sampleRate);
    }
}

void Instance::sendMidi (std::vector<MidiEvent> events)
{
    std::vector<intptr_t> list { static_cast<intptr_t> (events.size()), 0 };

    for (auto& event : events)
        list.push_back (reinterpret_cast<intptr_t> (&event));

    dispatch (effProcessEvents, 0, 0, list.data());
}

std::vector<char> Instance::getChunk()
{
    char* data = nullptr;
    const auto size = dispatch (effGetChunk, 0, 0, &data);
    return { data, data + size };
}

void Instance::setChunk (std::vector<char> chunk)
{
    dispatch (effSetChunk, 0, static_cast<intptr_t> (chunk.size()), chunk.data());
}

std::vector<Instance::Automation> Instance::getAutomations() const
{
    const std::lock_guard lock (automationsLock);
    return automations;
}

void Instance::clearAutomations()
{
    const std::lock_guard lock (automationsLock);
    automations.clear();
}

intptr_t Instance::hostCallback (Effect* effect, int32_t operation, int32_t index, intptr_t value, void* pointer,
                                 float option)
{
    if (operation == hostVersion)
        return 2400;

    auto* instance = effect != nullptr ? static_cast<Instance*> (effect->user) : nullptr;
    return instance != nullptr ? instance->answer (operation, index, value, pointer, option) : 0;
}

intptr_t Instance::answer (int32_t operation, int32_t index, intptr_t value, const void* pointer, float option)
{
    switch (operation)
    {
        case hostAutomate:
        case hostBeginEdit:
        case hostEndEdit:
        {
            const auto held = hostLock != nullptr ? std::unique_lock (*hostLock) : std::unique_lock<std::mutex>();

            if (keepsAutomations)
            {
                const std::lock_guard keeping (automationsLock);
                automations.push_back ({ operation, index, option });
            }

            return 1;
        }

        case hostGetTime: return answersTime ? reinterpret_cast<intptr_t> (&time) : 0;
        case hostGetProcessLevel: return processLevel;
        case hostCanDo: return resizeWindow && std::strcmp (static_cast<const char*> (pointer), "sizeWindow") == 0;

        case hostSizeWindow:
            if (! resizeWindow)
                return 0;

            resizeWindow (index, static_cast<int> (value));
            return 1;

        default: return 0;
    }
}

} // namespace rawhost
