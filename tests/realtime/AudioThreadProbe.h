// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <cstddef>

/** Watches what one thread asks of the system while it plays the audio thread. The functions of the C
    library that allocate and lock are replaced in this program by ones that count. */
namespace probe
{

struct Counts
{
    int allocations = 0;    // malloc, calloc, realloc, memalign and free
    int foreignLocks = 0;   // locks of mutexes outside the allowed ranges
    int contendedLocks = 0; // locks that had to wait
    int waits = 0;          // condition variables and the like
};

/** A mutex that may be taken, by the bytes of its object. */
struct AllowedLock
{
    const void* object;
    std::size_t size;
};

/** Counts on the calling thread between construction and stop(). */
class Watch
{
public:
    explicit Watch (AllowedLock allowed);
    ~Watch();

    Watch (const Watch&) = delete;
    Watch& operator= (const Watch&) = delete;

    Counts stop();
};

} // namespace probe
