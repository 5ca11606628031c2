// SPDX-License-Identifier: GPL-3.0-or-later

#include "AudioThreadProbe.h"

#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <malloc.h>
#include <new>
#include <pthread.h>
#include <utility>

extern "C"
{
    // The C library's own, under names that it keeps for this purpose.
    void* __libc_malloc (size_t);
    void* __libc_calloc (size_t, size_t);
    void* __libc_realloc (void*, size_t);
    void* __libc_memalign (size_t, size_t);
    void __libc_free (void*);
}

namespace probe
{

namespace
{

// Initial-exec, so that reading it never allocates.
__attribute__ ((tls_model ("initial-exec"))) thread_local bool watching = false;
__attribute__ ((tls_model ("initial-exec"))) thread_local Counts counts;
__attribute__ ((tls_model ("initial-exec"))) thread_local AllowedObjects allowed {};

constexpr int neverFails = -1;
__attribute__ ((tls_model ("initial-exec"))) thread_local int numBlocksLeft = neverFails;

void countAllocation()
{
    if (watching)
        ++counts.allocations;
}

void countCondition()
{
    if (watching)
        ++counts.conditions;
}

bool isAllowed (const void* mutex)
{
    const auto* address = static_cast<const char*> (mutex);

    for (const auto& [object, size] : allowed)
        if (const auto* start = static_cast<const char*> (object); address >= start && address < start + size)
            return true;

    return false;
}

template <typename Function>
Function next (const char* name)
{
    return reinterpret_cast<Function> (dlsym (RTLD_NEXT, name));
}

} // namespace

Watch::Watch (const AllowedObjects& objects)
{
    allowed = objects;
    counts = {};
    watching = true;
}

Watch::~Watch()
{
    watching = false;
}

Counts Watch::stop()
{
    watching = false;
    return counts;
}

void failAfter (int numLeft)
{
    numBlocksLeft = numLeft;
}

bool stopFailing()
{
    return std::exchange (numBlocksLeft, neverFails) == neverFails;
}

} // namespace probe

void* operator new (size_t size)
{
    // The handler of the failure has memory again.
    if (probe::numBlocksLeft >= 0 && --probe::numBlocksLeft < 0)
        throw std::bad_alloc();

    if (auto* block = std::malloc (size))
        return block;

    throw std::bad_alloc();
}

void operator delete (void* block) noexcept
{
    std::free (block);
}

void operator delete (void* block, size_t) noexcept
{
    std::free (block);
}

//==============================================================================
// Visible to all libraries of the process.
#pragma GCC visibility push(default)

extern "C"
{
    void* malloc (size_t size)
    {
        probe::countAllocation();
        return __libc_malloc (size);
    }

    void* calloc (size_t number, size_t size)
    {
        probe::countAllocation();
        return __libc_calloc (number, size);
    }

    void* realloc (void* block, size_t size)
    {
        probe::countAllocation();
        return __libc_realloc (block, size);
    }

    void free (void* block)
    {
        if (block != nullptr)
            probe::countAllocation();

        __libc_free (block);
    }

    void* memalign (size_t alignment, size_t size)
    {
        probe::countAllocation();
        return __libc_memalign (alignment, size);
    }

    void* aligned_alloc (size_t alignment, size_t size)
    {
        return memalign (alignment, size);
    }

    int posix_memalign (void** block, size_t alignment, size_t size)
    {
        *block = memalign (alignment, size);
        return *block != nullptr ? 0 : ENOMEM;
    }

    int pthread_mutex_lock (pthread_mutex_t* mutex)
    {
        static const auto original = probe::next<int (*) (pthread_mutex_t*)> ("pthread_mutex_lock");

        if (probe::watching && ! probe::isAllowed (mutex))
            ++probe::counts.foreignLocks;

        return original (mutex);
    }

    int pthread_cond_signal (pthread_cond_t* condition)
    {
        static const auto original = probe::next<int (*) (pthread_cond_t*)> ("pthread_cond_signal");
        probe::countCondition();
        return original (condition);
    }

    int pthread_cond_broadcast (pthread_cond_t* condition)
    {
        static const auto original = probe::next<int (*) (pthread_cond_t*)> ("pthread_cond_broadcast");
        probe::countCondition();
        return original (condition);
    }

    int pthread_cond_wait (pthread_cond_t* condition, pthread_mutex_t* mutex)
    {
        static const auto original = probe::next<int (*) (pthread_cond_t*, pthread_mutex_t*)> ("pthread_cond_wait");
        probe::countCondition();
        return original (condition, mutex);
    }
}

#pragma GCC visibility pop
