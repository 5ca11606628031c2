// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace K7R
{

class Parameter;

/** Which parameter the host reaches at which of its flat indexes, and what it last set there.

    Every entry is one atomic word, so that the audio thread and any host thread may look up while
    the message thread assigns. Between the two words that a move of a parameter changes, a look-up
    can see neither assignment; it never sees both.

    Owned by the BasePlugin; parameters are not owned.
*/
class HostParameterMap
{
public:
    static constexpr int capacity = 256;
    static constexpr int unmapped = -1;

    /** Who stands at each index; null where nobody does. Not owned. */
    using Table = std::array<Parameter*, capacity>;

    /** The parameter at a host index; null if none is mapped or the index is out of range. */
    Parameter* get (int hostIndex) const noexcept;

    /** The host index of a parameter, or `unmapped`. */
    int indexOf (const Parameter&) const noexcept;

    /** Puts a parameter at an index, where it replaces any other, and removes it from the index
        where it stood before. Message thread. */
    void assign (int hostIndex, Parameter&) noexcept;

    /** Empties an index; returns whether it held a parameter. Message thread. */
    bool clear (int hostIndex) noexcept;

    /** Makes the table the assignment. Indexes that don't change are never empty on the way. Message thread. */
    void replaceAll (const Table&) noexcept;

    //==============================================================================
    /** The last normalised value that the host set at an index, mapped or not. */
    float getHostValue (int hostIndex) const noexcept;
    void setHostValue (int hostIndex, float value) noexcept;

    /** True while the host itself sets this index, so that the change isn't sent back to it. */
    bool isSetByHost (int hostIndex) const noexcept;

    /** Marks an index as being set by the host for as long as the object lives. */
    class ScopedHostSet
    {
    public:
        ScopedHostSet (HostParameterMap&, int hostIndex) noexcept;
        ~ScopedHostSet();

        ScopedHostSet (const ScopedHostSet&) = delete;
        ScopedHostSet& operator= (const ScopedHostSet&) = delete;

    private:
        std::atomic<bool>* guard;
    };

private:
    struct Slot
    {
        std::atomic<Parameter*> parameter { nullptr };
        std::atomic<float> hostValue { 0.0f };
        std::atomic<bool> setByHost { false };
    };

    static bool isValid (int hostIndex) noexcept { return hostIndex >= 0 && hostIndex < capacity; }

    Slot& at (int hostIndex) noexcept { return slots[static_cast<std::size_t> (hostIndex)]; }
    const Slot& at (int hostIndex) const noexcept { return slots[static_cast<std::size_t> (hostIndex)]; }

    std::array<Slot, capacity> slots;
};

} // namespace K7R
