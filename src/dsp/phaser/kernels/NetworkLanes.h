// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/phaser/kernels/VectorMath.h"

namespace quilvane
{
namespace
{

/** How one side, or both, lie in vectors: V holds a value, and W two of them, of the lower and the upper group of
    sections or of two branches or samples. In memory the sides take turns. */
template <int Sides>
struct LanesOf;

template <>
struct LanesOf<2>
{
    using V = Double2;
    using W = Double4;

    static QUILVANE_INLINE V fill (double x) { return V { x, x }; }
    static QUILVANE_INLINE V load (const double* p) { return loadVector<V> (p); }
    static QUILVANE_INLINE void store (double* p, V v) { storeVector (p, v); }
    static QUILVANE_INLINE W join (V lower, V upper) { return __builtin_shufflevector (lower, upper, 0, 1, 2, 3); }
    static QUILVANE_INLINE V lower (W w) { return __builtin_shufflevector (w, w, 0, 1); }
    static QUILVANE_INLINE V upper (W w) { return __builtin_shufflevector (w, w, 2, 3); }
};

// Of V the second lane holds nothing that matters: vectors of two move more easily than single values.
template <>
struct LanesOf<1>
{
    using V = Double2;
    using W = Double2;

    static QUILVANE_INLINE V fill (double x) { return V { x, x }; }
    static QUILVANE_INLINE V load (const double* p) { return fill (*p); }
    static QUILVANE_INLINE void store (double* p, V v) { *p = v[0]; }
    static QUILVANE_INLINE W join (V lower, V upper) { return __builtin_shufflevector (lower, upper, 0, 2); }
    static QUILVANE_INLINE V lower (W w) { return w; }
    static QUILVANE_INLINE V upper (W w) { return __builtin_shufflevector (w, w, 1, 1); }
};

template <int Sides>
struct Lanes : LanesOf<Sides>
{
    using typename LanesOf<Sides>::V;
    using typename LanesOf<Sides>::W;
    using LanesOf<Sides>::join;
    using LanesOf<Sides>::load;

    static QUILVANE_INLINE W twice (V v) { return join (v, v); }

    /** Two values that were stored one by one: a single load would wait until both stores are done. */
    static QUILVANE_INLINE W loadPair (const double* p) { return join (load (p), load (p + Sides)); }
};

} // namespace
} // namespace quilvane
