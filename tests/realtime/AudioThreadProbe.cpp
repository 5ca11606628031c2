// SPDX-License-Identifier: GPL-3.0-or-later

#include "AudioThreadProbe.h"

#include <cerrno>
#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>

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
__attribute__ ((tls_model ("initial-exec"))) thread_local AllowedLock allowed {};

void countAllocation()
{
    if (watching)
        ++counts.allocations;
}

bool isAllowed (const void* mutex)
{
    const auto* start = static_cast<const char*> (allowed.object);
    const auto* address = static_cast<const char*> (mutex);
    return address >= start && address < start + allowed.size;
}

template <typename Function>
Function next (const char* name)
{
    return reinterpret_cast<Function> (dlsym (RTLD_NEXT, name));
}

} // namespace

Watch::Watch (AllowedLock lock)
{
    allowed = lock;
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

} // namespace probe

//==============================================================================
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

        if (probe::watching)
        {
            if (! probe::isAllowed (mutex))
                ++probe::counts.foreignLocks;

            const auto result = pthread_mutex_trylock (mutex);

            if (result != EBUSY)
                return result;

            ++probe::counts.contendedLocks;
        }

        return original (mutex);
    }

    int pthread_cond_signal (pthread_cond_t* condition)
    {
        static const auto original = probe::next<int (*) (pthread_cond_t*)> ("pthread_cond_signal");

        if (probe::watching)
            ++probe::counts.waits;

        return original (condition);
    }

    int pthread_cond_wait (pthread_cond_t* condition, pthread_mutex_t* mutex)
    {
        static const auto original = probe::next<int (*) (pthread_cond_t*, pthread_mutex_t*)> ("pthread_cond_wait");

        if (probe::watching)
            ++probe::counts.waits;

        return original (condition, mutex);
    }
}
