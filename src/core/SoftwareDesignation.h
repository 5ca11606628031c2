// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{

/** What a product says of itself, in texts. */
class SoftwareDesignation
{
public:
    virtual ~SoftwareDesignation() = default;

    /** The product's name, which its files and folders bear as well. */
    virtual juce::String getProductName() const = 0;
    virtual juce::String getDescription() const = 0;
    virtual juce::String getVersion() const = 0;
    virtual juce::String getWebPage() const = 0;
    virtual juce::String getYear() const = 0;

    /** The full path of the plug-in's own binary. */
    virtual juce::String getPluginFile() const = 0;

    /** As year-month-day. */
    virtual juce::String getReleaseDate() const = 0;
    virtual juce::String getExtraInfo() const = 0;
    virtual juce::String getBuildId() const = 0;
    virtual juce::String getFormatName() const = 0;
    virtual juce::String getArchitecture() const = 0;

    virtual juce::String getReleaseChannel() const = 0;

    /** Whether this is a build for users. Any other may run portable, from folders beside the binary, and shows which
        build it is. */
    virtual bool isRelease() const = 0;
    virtual juce::String getDisplayVersion() const = 0;
    virtual juce::String getRevision() const = 0;

    /** A section of the credits. */
    struct Credit
    {
        juce::String heading, text;
    };

    /** Who made what the product is made of, and under which terms it may be used, from the top down. */
    virtual std::vector<Credit> getCredits() const { return {}; }
};

} // namespace K7R
