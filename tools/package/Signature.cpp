// SPDX-License-Identifier: GPL-3.0-or-later

#include "Signature.h"

#include <algorithm>
#include <array>
#include <vector>

namespace K7R::package
{

namespace
{

using juce::BigInteger;

constexpr int publicExponent = 19;
constexpr int signatureDigits = 64; // the modulus has 255 bits

/** The factors of the key's modulus. */
constexpr std::array<const char*, 8> primes {
    "13", "41", "179", "619", "1559", "1879", "1857714642765849619", "131132727106312658539277404330960939838744629",
};

BigInteger parse (const juce::String& digits, int base)
{
    BigInteger number;
    number.parseString (digits, base);
    return number;
}

/** Modulo a prime p, where each number but 0 is a power of one root and all exponents count modulo p - 1. */
struct Field
{
    explicit Field (const char* digits) : prime (parse (digits, 10))
    {
        auto order = prime - 1;
        hasSeveralRoots = (order % publicExponent).isZero();

        // The order of the 19th powers, which have roots, where not all numbers are one.
        if (hasSeveralRoots)
            order /= publicExponent;

        orderOfPowers = order;

        // The first of 1, 1 + order, 1 + 2 * order... that 19 divides. juce::BigInteger::inverseModulo() is no
        // way there: its last step adds the modulus as many times as a number of many digits says.
        inverseExponent = 1;

        while (! (inverseExponent % publicExponent).isZero())
            inverseExponent += order;

        inverseExponent /= publicExponent;
    }

    bool hasRoot (const BigInteger& number) const
    {
        if (! hasSeveralRoots)
            return true;

        auto power = number % prime;

        if (power.isZero())
            return true;

        power.exponentModulo (orderOfPowers, prime);
        return power.isOne();
    }

    BigInteger findRoot (const BigInteger& number) const
    {
        auto root = number % prime;
        root.exponentModulo (inverseExponent, prime);
        return root;
    }

    /** What gives 1 when multiplied by the number, by Fermat's little theorem. */
    BigInteger invert (const BigInteger& number) const
    {
        auto inverse = number % prime;
        inverse.exponentModulo (prime - 2, prime);
        return inverse;
    }

    BigInteger prime;
    BigInteger orderOfPowers;
    BigInteger inverseExponent;
    bool hasSeveralRoots = false;
};

struct Fields
{
    Fields()
    {
        for (const auto* digits : primes)
        {
            fields.emplace_back (digits);
            modulus *= fields.back().prime;
        }
    }

    std::vector<Field> fields;
    BigInteger modulus { 1 };
};

const Fields& getFields()
{
    static const Fields fields;
    return fields;
}

bool hasRoot (const BigInteger& number)
{
    const auto& fields = getFields().fields;
    return std::all_of (fields.begin(), fields.end(), [&number] (const auto& field) { return field.hasRoot (number); });
}

/** Puts the roots together by the Chinese remainder theorem: each one is multiplied by a number that is 1
    modulo its own prime and 0 modulo all others. */
BigInteger findRoot (const BigInteger& number)
{
    const auto& modulus = getFields().modulus;
    BigInteger root;

    for (const auto& field : getFields().fields)
    {
        const auto others = modulus / field.prime;
        root += field.findRoot (number) * others * field.invert (others);
    }

    return root % modulus;
}

} // namespace

bool canSign (const juce::String& digest)
{
    return hasRoot (parse (digest, 16));
}

juce::String sign (const juce::String& digest)
{
    const auto number = parse (digest, 16);
    return hasRoot (number) ? findRoot (number).toString (16, signatureDigits) : juce::String();
}

} // namespace K7R::package
