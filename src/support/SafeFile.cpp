// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/SafeFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <mutex>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace K7R
{

namespace
{

// Hidden, and of an extension that nobody lists.
constexpr const char* temporaryPrefix = ".quilvane-";
constexpr const char* temporaryExtension = ".tmp";
constexpr int temporaryDigits = 16;
constexpr int msUntilAbandoned = 60 * 60 * 1000;

std::filesystem::path pathOf (const juce::File& file)
{
    return file.getFullPathName().toStdString();
}

/** Returns where a chain of links ends, whether there is something or not; juce::File() if it doesn't end. */
juce::File followLinks (const juce::File& file)
{
    constexpr int mostLinks = 40;
    auto path = pathOf (file);
    std::error_code error;

    for (int i = 0; i < mostLinks; ++i)
    {
        if (! std::filesystem::is_symlink (path, error))
            return juce::String::fromUTF8 (path.c_str());

        const auto next = path.parent_path() / std::filesystem::read_symlink (path, error);

        if (error)
            return {};

        // A ".." behind a folder that is a link itself is the parent of where that leads.
        path = std::filesystem::canonical (next.parent_path(), error) / next.filename();

        if (error)
            return {};
    }

    return {};
}

bool isAbandoned (const juce::File& file)
{
    const auto digits = file.getFileName()
                            .fromFirstOccurrenceOf (temporaryPrefix, false, false)
                            .upToLastOccurrenceOf (temporaryExtension, false, false);
    const auto age = juce::Time::getCurrentTime() - file.getLastModificationTime();

    return digits.length() == temporaryDigits && digits.containsOnly ("0123456789abcdef")
           && age.inMilliseconds() > msUntilAbandoned && ! file.isSymbolicLink();
}

/** Deletes what killed processes left in a folder, if that wasn't looked for lately. */
void removeAbandonedFiles (const juce::File& folder)
{
    struct Cleaning
    {
        juce::int64 folder = 0, time = 0; // a hash, and ms
    };

    // Without destructors: an instance that ends with the process saves its settings after the end of static objects.
    static std::mutex lock;
    static std::array<Cleaning, 16> lastOnes;
    static size_t oldest = 0;

    {
        const std::scoped_lock scope (lock);
        const Cleaning present { folder.getFullPathName().hashCode64(), juce::Time::currentTimeMillis() };
        auto* last = std::find_if (lastOnes.begin(), lastOnes.end(),
                                   [&] (const Cleaning& c) { return c.folder == present.folder; });

        if (last != lastOnes.end() && present.time - last->time < msUntilAbandoned)
            return;

        if (last == lastOnes.end())
            last = &lastOnes[oldest++ % lastOnes.size()];

        *last = present;
    }

    const auto pattern = juce::String (temporaryPrefix) + "*" + temporaryExtension;

    for (const auto& entry : juce::RangedDirectoryIterator (folder, false, pattern, juce::File::findFiles))
        if (isAbandoned (entry.getFile()))
            entry.getFile().deleteFile();
}

/** Makes an empty file, if there is none of that name. */
bool createFile (const juce::File& file, mode_t permissions)
{
    const auto handle = open (file.getFullPathName().toRawUTF8(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    return handle >= 0 && close (handle) == 0;
}

} // namespace

//==============================================================================
bool renameFile (const juce::File& from, const juce::File& to)
{
    // juce::File falls back to deleting and copying, which can lose both.
    std::error_code error;
    std::filesystem::rename (pathOf (from), pathOf (to), error);
    return ! error;
}

bool isSameFile (const juce::File& a, const juce::File& b)
{
    std::error_code error;
    return std::filesystem::equivalent (pathOf (a), pathOf (b), error) && ! error;
}

//==============================================================================
bool replaceFileSafely (const juce::File& file, const std::function<bool (juce::OutputStream&)>& write)
{
    const auto target = file != juce::File() ? followLinks (file) : juce::File();

    if (target == juce::File())
        return false;

    struct stat old
    {
    };
    const auto isNew = stat (target.getFullPathName().toRawUTF8(), &old) != 0;

    // Nothing is renamed over a folder, a pipe or a device.
    if (! isNew && ! S_ISREG (old.st_mode))
        return false;

    removeAbandonedFiles (target.getParentDirectory());

    const auto name = temporaryPrefix + juce::Uuid().toString().substring (0, temporaryDigits) + temporaryExtension;
    const juce::TemporaryFile temporary (target, target.getSiblingFile (name)); // deleted on any way out

    // Nobody may read it meanwhile who may not read the old one.
    constexpr mode_t everyone = 0666, owner = 0600, permissions = 07777;

    if (! createFile (temporary.getFile(), isNew ? everyone : owner))
        return false;

    {
        juce::FileOutputStream stream (temporary.getFile());

        if (stream.failedToOpen() || ! write (stream))
            return false;

        stream.flush(); // to the disk

        // A disk that fills up can take a part of the last write without an error.
        if (stream.getStatus().failed() || temporary.getFile().getSize() != stream.getPosition())
            return false;
    }

    // Where it can't be set, the file system has permissions of its own, or the owner's alone are left.
    if (! isNew)
        juce::ignoreUnused (chmod (temporary.getFile().getFullPathName().toRawUTF8(), old.st_mode & permissions));

    return renameFile (temporary.getFile(), target);
}

bool replaceFileSafely (const juce::File& file, const juce::String& text)
{
    return replaceFileSafely (file, [&text] (juce::OutputStream& stream)
                              { return stream.write (text.toRawUTF8(), text.getNumBytesAsUTF8()); });
}

bool replaceFileSafely (const juce::File& file, const juce::XmlElement& xml)
{
    return replaceFileSafely (file, xml.toString());
}

//==============================================================================
juce::String decodeText (const void* bytes, size_t numBytes)
{
    constexpr size_t markBytes = 3;

    // JUCE would read on behind a mark that stands alone.
    if (numBytes == markBytes && juce::CharPointer_UTF8::isByteOrderMark (bytes))
        return {};

    return juce::String::createStringFromData (bytes, static_cast<int> (numBytes));
}

bool isRegularFile (const juce::File& file)
{
    std::error_code error;
    return std::filesystem::is_regular_file (pathOf (file), error);
}

bool readRegularFile (const juce::File& file, size_t maximumBytes, juce::MemoryBlock& bytes)
{
    // Else a pipe is opened when somebody writes into it.
    const auto handle = open (file.getFullPathName().toRawUTF8(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);

    if (handle < 0)
        return false;

    struct stat info
    {
    };
    auto isRead = fstat (handle, &info) == 0 && S_ISREG (info.st_mode)
                  && static_cast<juce::uint64> (info.st_size) <= maximumBytes;

    if (isRead)
    {
        bytes.setSize (static_cast<size_t> (info.st_size));
        size_t numRead = 0;

        while (numRead < bytes.getSize())
        {
            const auto number = read (handle, bytes.begin() + numRead, bytes.getSize() - numRead);

            if (number <= 0)
                break; // it has become shorter, or its disk fails

            numRead += static_cast<size_t> (number);
        }

        isRead = numRead == bytes.getSize();
    }

    close (handle);
    return isRead;
}

} // namespace K7R
