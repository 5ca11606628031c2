// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>

#include "dsp/phaser/kernels/Kernels.h"

#if defined(__x86_64__) && defined(__FMA__)
 #include <immintrin.h>
#endif

// The vectors of the compilers' own (GCC's and Clang's vector extensions), which compile for any processor, and the
// functions of the control values on them. Included by the sources that are compiled for one kind of processor each,
// so everything stands in a namespace of the source's own.

namespace quilvane
{
namespace
{

using Double2 = double __attribute__ ((vector_size (16)));
using Double4 = double __attribute__ ((vector_size (32)));
using Float2 = float __attribute__ ((vector_size (8)));
using Float4 = float __attribute__ ((vector_size (16)));
using Int4 = int32_t __attribute__ ((vector_size (16)));
using Long2 = int64_t __attribute__ ((vector_size (16)));
using Long4 = int64_t __attribute__ ((vector_size (32)));

#define QUILVANE_INLINE inline __attribute__ ((always_inline))

template <typename Vector>
QUILVANE_INLINE Vector loadVector (const void* source)
{
    Vector v;
    std::memcpy (&v, source, sizeof (v));
    return v;
}

/** Four values that were stored in pairs. */
QUILVANE_INLINE Double4 loadPairs (const double* source)
{
    return __builtin_shufflevector (loadVector<Double2> (source), loadVector<Double2> (source + 2), 0, 1, 2, 3);
}

QUILVANE_INLINE Float4 loadPairs (const float* source)
{
    return __builtin_shufflevector (loadVector<Float2> (source), loadVector<Float2> (source + 2), 0, 1, 2, 3);
}

template <typename Vector>
QUILVANE_INLINE void storeVector (void* destination, Vector v)
{
    std::memcpy (destination, &v, sizeof (v));
}

/** Returns a b + c, in one operation where the processor has it. The compilers may not fuse on their own: in a sum of
    two products they would choose which one, and some sums have to be rounded like the plain ones. */
template <typename Vector>
QUILVANE_INLINE Vector multiplyAdd (Vector a, Vector b, Vector c)
{
#if defined(__x86_64__) && defined(__FMA__)
    if constexpr (sizeof (Vector) == sizeof (Double4))
        return Vector (_mm256_fmadd_pd (__m256d (a), __m256d (b), __m256d (c)));
    else
        return Vector (_mm_fmadd_pd (__m128d (a), __m128d (b), __m128d (c)));
#else
    return a * b + c;
#endif
}

/** The sum of terms[i] x^i by Estrin's scheme, whose chain of operations is short: neighbours first. */
template <size_t Size>
QUILVANE_INLINE Double4 polynomial (const Double4 (&terms)[Size], Double4 x)
{
    if constexpr (Size == 1)
        return terms[0];
    else
    {
        constexpr auto half = (Size + 1) / 2;
        Double4 pairs[half];

        for (size_t i = 0; i < half; ++i)
            pairs[i] = 2 * i + 1 < Size ? multiplyAdd (terms[2 * i + 1], x, terms[2 * i]) : terms[2 * i];

        return polynomial (pairs, x * x);
    }
}

template <size_t Size>
QUILVANE_INLINE Double4 polynomial (const double (&coefficients)[Size], Double4 x)
{
    Double4 terms[Size];

    for (size_t i = 0; i < Size; ++i)
        terms[i] = Double4 {} + coefficients[i];

    return polynomial (terms, x);
}

/** The nearest whole number, in the low bits of the sum; for magnitudes below 2^50. */
inline constexpr double roundingOffset = 6755399441055744.0; // 1.5 * 2^52

/** Rounds to float what is known to an error, of either sign. Where a value lies so near to the middle between two
    floats that the error might decide, `exact (index)` does. */
template <typename Exact>
QUILVANE_INLINE Float4 roundExactly (Double4 v, Double4 error, Exact&& exact)
{
    const auto low = __builtin_convertvector(v - error, Float4), high = __builtin_convertvector(v + error, Float4);
    const Int4 differ = low != high; // NaN too
    const auto halves = reinterpret_cast<Long2> (differ);
    auto result = low;

    if ((halves[0] | halves[1]) != 0)
        for (int i = 0; i < 4; ++i)
            if (differ[i] != 0)
                result[i] = exact (i);

    return result;
}

// The library's power of floats isn't always rounded to the nearest. For all floats from 2^-31 to 1, glibc 2.36 rounds
// to the other side only where the exact value lies within 2^-33.1 of the middle.
inline constexpr double floatPowerError = 1.0 / (1ull << 32);

//==============================================================================
// (sin x / x - 1) / x^2 in x^2 by Taylor's series: the sine is good to 4.4e-14 of it for |x| up to pi/2.
inline constexpr double sineCoefficients[] {
    -0.16666666666666666,   0.008333333333333333,   -0.0001984126984126984, 2.7557319223985893e-06,
    -2.505210838544172e-08, 1.6059043836821613e-10, -7.647163731819816e-13, 2.8114572543455206e-15,
};
inline constexpr double sineError = 1.0 / (1ull << 43);

inline void sine (const double* phases, float* waves, size_t count)
{
    constexpr double quarterPi = 0.7853981633974483, oneOverPi = 0.3183098861837907;
    constexpr double pi = 3.141592653589793, piRest = 1.2246467991473532e-16; // pi in two parts

    for (size_t i = 0; i < count; i += 4)
    {
        const auto x = loadPairs (phases + i) - quarterPi;
        const auto shifted = multiplyAdd (x, Double4 {} + oneOverPi, Double4 {} + roundingOffset);
        const auto turns = shifted - roundingOffset;
        const auto y = multiplyAdd (turns, Double4 {} - piRest, multiplyAdd (turns, Double4 {} - pi, x));
        const auto y2 = y * y;
        const auto value = multiplyAdd (polynomial (sineCoefficients, y2), y2 * y, y);

        // Odd half turns change the sign.
        const auto sign = reinterpret_cast<Long4> (shifted) << 63;
        const auto signedValue = reinterpret_cast<Double4> (reinterpret_cast<Long4> (value) ^ sign);

        storeVector (waves + i, roundExactly (signedValue, signedValue * sineError,
                                              [&] (int lane) { return static_cast<float> (std::sin (x[lane])); }));
    }
}

inline void hyperTriangle (const double* phases, float* waves, size_t count)
{
    constexpr double pi = 3.141592653589793, twoOverPi = 0.6366197723675814, threeHalvesPi = 4.71238898038469;

    for (size_t i = 0; i < count; i += 4)
    {
        const auto phase = loadPairs (phases + i);
        const auto triangle = phase < pi ? phase * twoOverPi - 1.0 : (threeHalvesPi - phase) * twoOverPi;
        const auto base = 0.5f - __builtin_convertvector(triangle, Float4) * 0.5f;
        const auto u = __builtin_convertvector(base, Double4);
        const Double4 root { std::sqrt (u[0]), std::sqrt (u[1]), std::sqrt (u[2]), std::sqrt (u[3]) };
        const auto power = u * root;
        const auto exact = [&] (int lane) { return powf (base[lane], 1.5f); }; // std::pow would be compiled here
        storeVector (waves + i, 1.0f - 2.0f * roundExactly (power, power * floatPowerError, exact));
    }
}

// 2^x by the series of e^(x ln 2): good to 3e-13 of it for |x| up to 1/2.
inline constexpr double exponentialCoefficients[] {
    1.0,
    0.6931471805599453,
    0.24022650695910072,
    0.05550410866482158,
    0.009618129107628477,
    0.0013333558146428443,
    0.0001540353039338161,
    1.5252733804059841e-05,
    1.321548679014431e-06,
    1.01780860092397e-07,
    7.054911620801123e-09,
};
inline constexpr double exponentialError = 1.0 / (1ull << 41);

inline void frequency (const float* exponents, float highest, float* hz, size_t count)
{
    constexpr double lowest = 13.75, limit = 1000.0;

    for (size_t i = 0; i < count; i += 4)
    {
        const auto e = __builtin_convertvector(loadPairs (exponents + i), Double4);
        const auto limited = e > limit ? Double4 {} + limit : e < -limit ? Double4 {} - limit : e;
        const auto shifted = limited + roundingOffset;
        const auto whole = shifted - roundingOffset;
        const auto fraction = polynomial (exponentialCoefficients, limited - whole);
        const auto power =
            reinterpret_cast<Double4> (reinterpret_cast<Long4> (fraction) + (reinterpret_cast<Long4> (shifted) << 52));

        const auto exact = [&] (int lane) { return static_cast<float> (std::pow (2.0, e[lane]) * lowest); };
        const auto result = roundExactly (power * lowest, power * (lowest * exponentialError), exact);
        storeVector (hz + i, result > highest ? Float4 {} + highest : result);
    }
}

// (tan x / x - 1) / x^2 in x^2 by Taylor's series: below 1e-18 for |x| up to 0.115.
inline constexpr double tangentCoefficients[] {
    1.0 / 3.0, 2.0 / 15.0, 17.0 / 315.0, 62.0 / 2835.0, 1382.0 / 155925.0, 21844.0 / 6081075.0, 929569.0 / 638512875.0,
};

inline void warp (const float* hz, double scale, double gain, double* warped, size_t count)
{
    for (size_t i = 0; i < count; i += 4)
    {
        const auto x = __builtin_convertvector(loadVector<Float4> (hz + i), Double4) * scale;
        const auto x2 = x * x;
        storeVector (warped + i, multiplyAdd (polynomial (tangentCoefficients, x2), x2 * x, x) * gain);
    }
}

inline void lag (double* lagged, double coefficient, float* first, float* second, size_t numSamples)
{
    Double4 state { lagged[0], lagged[1], lagged[2], lagged[3] };

    for (size_t i = 0; i < 2 * numSamples; i += 2)
    {
        const auto a = loadVector<Float2> (first + i), b = loadVector<Float2> (second + i);
        const auto waves = __builtin_convertvector(__builtin_shufflevector (a, b, 0, 1, 2, 3), Double4);
        state -= (state - waves) * coefficient;
        const auto unipolar = (__builtin_convertvector(state, Float4) + 1.0f) * 0.5f;
        storeVector (first + i, __builtin_shufflevector (unipolar, unipolar, 0, 1));
        storeVector (second + i, __builtin_shufflevector (unipolar, unipolar, 2, 3));
    }

    storeVector (lagged, state);
}

} // namespace
} // namespace quilvane
