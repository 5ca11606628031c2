// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include <juce_core/juce_core.h>

namespace K7R
{
inline namespace tools
{

/** A file that comes into being at once, or not at all.

    Everything is written to a temporary file in the same folder, which takes the file's name at
    commit(). Without a commit the temporary file is deleted and the old file, if there is one, stands
    as it was. Every function throws a Failure.
*/
class OutputFile
{
public:
    /** Refuses a file in a folder that doesn't exist, and a name that belongs to anything but a regular
        file, so that a whole command can be refused before its work starts. */
    static void check (const juce::File&);

    /** Refuses an output that is the same file as an input, by any name. */
    static void checkIsNot (const juce::File& input, const juce::File& output);

    explicit OutputFile (const juce::File&);

    const juce::File& getFile() const noexcept { return temporary.getTargetFile(); }

    /** The file that is written until the commit. */
    const juce::File& getTemporaryFile() const noexcept { return temporary.getFile(); }

    /** Opens the temporary file, empty. */
    std::unique_ptr<juce::FileOutputStream> createStream();

    /** Puts what was written in the file's place; the stream is closed by then. */
    void commit();

    /** Writes a whole file with one function, which returns false if it fails. */
    static void write (const juce::File&, const std::function<bool (juce::OutputStream&)>&);

private:
    juce::TemporaryFile temporary;
};

} // namespace tools
} // namespace K7R
