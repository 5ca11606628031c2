// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/SafeFile.h"

#include <filesystem>

namespace quilvane
{

bool renameFile (const juce::File& from, const juce::File& to)
{
    // juce::File falls back to deleting and copying, which can lose both.
    std::error_code error;
    std::filesystem::rename (from.getFullPathName().toStdString(), to.getFullPathName().toStdString(), error);
    return ! error;
}

bool isSameFile (const juce::File& a, const juce::File& b)
{
    std::error_code error;
    return std::filesystem::equivalent (a.getFullPathName().toStdString(), b.getFullPathName().toStdString(), error)
           && ! error;
}

bool replaceFileSafely (const juce::File& file, const juce::String& text)
{
    if (file == juce::File() || file.isDirectory())
        return false;

    // What a link points to is written, and the link stays.
    const auto target = file.isSymbolicLink() ? file.getLinkedTarget() : file;
    const auto numBytes = text.getNumBytesAsUTF8();

    // Hidden, and of an extension that nobody lists; deleted on any way out.
    const juce::TemporaryFile temporary (
        target, target.getSiblingFile ("." + juce::Uuid().toString().substring (0, 16) + ".tmp"));

    {
        juce::FileOutputStream stream (temporary.getFile());

        if (stream.failedToOpen() || ! stream.write (text.toRawUTF8(), numBytes))
            return false;

        stream.flush(); // to the disk

        if (stream.getStatus().failed())
            return false;
    }

    // A disk that fills up can take a part of the last write without an error.
    if (temporary.getFile().getSize() != static_cast<juce::int64> (numBytes))
        return false;

    return renameFile (temporary.getFile(), target);
}

bool replaceFileSafely (const juce::File& file, const juce::XmlElement& xml)
{
    return replaceFileSafely (file, xml.toString());
}

} // namespace quilvane
