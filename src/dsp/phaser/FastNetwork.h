// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/phaser/QuilvaneOTA.h"
#include "dsp/phaser/Sides.h"
#include "dsp/phaser/kernels/Kernels.h"

namespace quilvane
{

/** The networks of both sides, and their fast form, which runs one of them or both over some samples at once: the same
    as

        network.setFrequency (hz);
        network.smooth();
        sample = network.processBaseRate (sample);

    for each sample, to within the rounding of double (some 1e-13 of full scale).

    While the same sides are run, their states stay in the form that the kernels take. Whoever asks for a network gets
    it with its state put back, so that either form can go on from where the other stopped.
*/
template <typename Network>
class FastNetwork
{
public:
    static constexpr int maximumSamples = Kernels::maximumSamples;

    /** @param kernelsToUse must live as long as this */
    explicit FastNetwork (const K7R::SampleRateConstants& constants, const Kernels& kernelsToUse = Kernels::get()) :
        kernels (kernelsToUse),
        networks { Network (constants), Network (constants) }
    {
    }

    /** One side's network, to be read, changed or run before the next call of process(). Both are given the same
        settings.
        @param side 0 for left, 1 for right */
    Network& get (size_t side) noexcept
    {
        putBack();
        return networks[side];
    }

    /** Hands both networks to a function, which may read, change and run them. */
    template <typename Function>
    void forEach (Function&& function)
    {
        putBack();

        for (auto& network : networks)
            function (network);
    }

    /** Runs one side or both, at least one.
        @param hz the all-passes' frequencies, of these sides, left and right in turn; read up to the next multiple of
            four values
        @param samples the sound, in the same order, in place
        @param numSamples of each side, from 1 to maximumSamples */
    void process (Sides, const float* hz, double* samples, int numSamples) noexcept;

    /** Clears the unusable states of a side that the last call of process() ran. The other side isn't touched.
        @param side 0 for left, 1 for right */
    void recover (size_t side) noexcept;

private:
    using Pointers = std::array<Network*, Kernels::maximumSides>;

    /** The networks of the held sides; the second one is null if it's one. */
    Pointers getHeld() noexcept;

    void take (Sides) noexcept;
    void putBack() noexcept;

    /** Hands each value of the held sides' state to a function (value in the network, place in the kernel's state). */
    template <typename Function>
    void forEachState (Function&&) noexcept;

    const Kernels& kernels;
    std::array<Network, Kernels::maximumSides> networks;

    Sides held; // of these sides the state is here
    Kernels::Network state {};
    const Kernels::NetworkFunctions* functions = nullptr;
    K7R::TPTOnePole allpass;
    bool isWarpFast = false;
    std::array<double, Kernels::maximumSides> lastHz {}, lastWarped {};
};

} // namespace quilvane
