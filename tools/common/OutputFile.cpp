// SPDX-License-Identifier: GPL-3.0-or-later

#include "OutputFile.h"

#include <filesystem>

#include "Failure.h"

namespace K7R
{
inline namespace tools
{

namespace
{

std::filesystem::path pathOf (const juce::File& file)
{
    return file.getFullPathName().toStdString();
}

Failure writeFailure (const juce::File& file)
{
    return Failure ("cannot write " + file.getFullPathName());
}

} // namespace

void OutputFile::check (const juce::File& file)
{
    if (! file.getParentDirectory().isDirectory())
        throw Failure ("there is no folder " + file.getParentDirectory().getFullPathName() + " to write to");

    std::error_code ignored;

    // To rename a file over a device would replace the device.
    if (std::filesystem::exists (pathOf (file), ignored) && ! std::filesystem::is_regular_file (pathOf (file), ignored))
        throw Failure (file.getFullPathName() + " is not a file that can be written over");
}

void OutputFile::checkIsNot (const juce::File& input, const juce::File& output)
{
    std::error_code ignored;

    if (input == output || std::filesystem::equivalent (pathOf (input), pathOf (output), ignored))
        throw Failure (output.getFullPathName() + " would be written over the file that is read");
}

OutputFile::OutputFile (const juce::File& file) : temporary (file, juce::TemporaryFile::useHiddenFile)
{
    check (file);
}

std::unique_ptr<juce::FileOutputStream> OutputFile::createStream()
{
    auto stream = std::make_unique<juce::FileOutputStream> (getTemporaryFile());

    if (stream->failedToOpen() || ! stream->setPosition (0) || stream->truncate().failed())
        throw writeFailure (getFile());

    return stream;
}

void OutputFile::commit()
{
    if (! temporary.overwriteTargetFileWithTemporary())
        throw writeFailure (getFile());
}

void OutputFile::write (const juce::File& file, const std::function<bool (juce::OutputStream&)>& writeTo)
{
    OutputFile output (file);

    {
        const auto stream = output.createStream();
        const auto isWritten = writeTo (*stream);
        stream->flush();

        if (! isWritten || stream->getStatus().failed())
            throw writeFailure (file);
    }

    output.commit();
}

} // namespace tools
} // namespace K7R
