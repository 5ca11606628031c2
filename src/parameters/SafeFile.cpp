// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/SafeFile.h"

namespace quilvane
{

bool replaceFileSafely (const juce::File& file, const juce::String& text)
{
    if (file == juce::File() || file.isDirectory())
        return false;

    const auto numBytes = text.getNumBytesAsUTF8();
    const juce::TemporaryFile temporary (file);

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

    return temporary.overwriteTargetFileWithTemporary();
}

bool replaceFileSafely (const juce::File& file, const juce::XmlElement& xml)
{
    return replaceFileSafely (file, xml.toString());
}

} // namespace quilvane
