// SPDX-License-Identifier: GPL-3.0-or-later

// The kernels for processors with AVX2 and fused multiply-add; compiled with the switches for these.

#if defined(__AVX2__) && defined(__FMA__)

 #include "dsp/phaser/kernels/NetworkKernel.h"

namespace quilvane
{

using namespace K7R;

const Kernels& getKernelsForAVX2() noexcept;

const Kernels& getKernelsForAVX2() noexcept
{
    return kernels;
}

} // namespace quilvane

#endif
