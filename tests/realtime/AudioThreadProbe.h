// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <cstddef>

/** Watches what one thread asks of the system while it plays the audio thread. The functions of the C
    library that allocate and lock are replaced in this program by ones that count. */
namespace probe
{

struct Counts
{
    int allocations = 0;  // malloc, calloc, realloc, memalign and free
    int foreignLocks = 0; // locks of mutexes outside the allowed objects
    int conditions = 0;   // waits for condition variables, and signals of them
};

/** An object whose mutexes may be taken. */
struct AllowedObject
{
    const void* object;
    std::size_t size;
};

using AllowedObjects = std::array<AllowedObject, 2>;

/** Counts on the calling thread between construction and stop(). */
class Watch
{
public:
    explicit Watch (const AllowedObjects&);
    ~Watch();

    Watch (const Watch&) = delete;
    Watch& operator= (const Watch&) = delete;

    Counts stop();
};

/** Lets operator new run out of memory on the calling thread, once.
    @param numLeft how many blocks it still has */
void failAfter (int numLeft);

/** Gives the memory back.
    @returns whether it ran out */
bool stopFailing();

} // namespace probe
