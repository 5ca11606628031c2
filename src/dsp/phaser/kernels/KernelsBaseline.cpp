// SPDX-License-Identifier: GPL-3.0-or-later

// The kernels for any processor that the program runs on, and the choice between them.

#include "dsp/phaser/kernels/NetworkKernel.h"

namespace quilvane
{

using namespace K7R;

#if defined(__x86_64__)
const Kernels& getKernelsForAVX2() noexcept;
#endif

const Kernels& Kernels::getBaseline() noexcept
{
    return kernels;
}

const Kernels& Kernels::get() noexcept
{
#if defined(__x86_64__)
    static const auto hasAVX2 = __builtin_cpu_supports ("avx2") && __builtin_cpu_supports ("fma");

    if (hasAVX2)
        return getKernelsForAVX2();
#endif

    return kernels;
}

} // namespace quilvane
