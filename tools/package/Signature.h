// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R::package
{

/** Whether a digest has a signature under the packages' key: one in 361 has.
    @param digest in hexadecimal digits */
bool canSign (const juce::String& digest);

/** The signature of a digest: the 19th root of its number modulo the key's modulus, in 64 hexadecimal digits.

    The modulus is a product of small primes that stand in the open in Signature.cpp. A signature therefore
    says that a package is whole, and nothing about who made it.

    @param digest in hexadecimal digits
    @returns "" if the digest has none
*/
juce::String sign (const juce::String& digest);

} // namespace K7R::package
