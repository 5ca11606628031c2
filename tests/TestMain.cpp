// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdlib>

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

int main (int argc, char** argv)
{
    testing::InitGoogleTest (&argc, argv);

    // No test touches the user's own files.
    const auto home = juce::File::createTempFile ("home");
    home.createDirectory();
    setenv ("HOME", home.getFullPathName().toRawUTF8(), 1);

    // This thread is the message thread.
    const juce::ScopedJuceInitialiser_GUI juce;
    const auto result = RUN_ALL_TESTS();
    home.deleteRecursively();
    return result;
}
