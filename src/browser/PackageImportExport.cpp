// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/PackageImportExport.h"

#include "parameters/SafeFile.h"

namespace quilvane
{

namespace
{

constexpr ZipBounds bounds { 256LL * 1024 * 1024, 16384, 1024 * 1024, 256LL * 1024 * 1024 };
constexpr int sliceMs = 12, pauseMs = 1;
constexpr size_t bufferBytes = 16384;

juce::String extensionOf (const juce::String& entryName)
{
    return entryName.fromLastOccurrenceOf (".", true, false);
}

/** Without folders and extension. */
juce::String stemOf (const juce::String& entryName)
{
    return entryName.replaceCharacter ('\\', '/')
        .fromLastOccurrenceOf ("/", false, false)
        .upToLastOccurrenceOf (".", false, false);
}

} // namespace

PackageImportExport::PackageImportExport (juce::Component& windowsParent, Listener& toTell) :
    parent (windowsParent),
    listener (toTell)
{
}

PackageImportExport::~PackageImportExport()
{
    stopTimer();
}

//==============================================================================
bool PackageImportExport::startImport (const juce::File& file, ContentSource& into)
{
    if (isImporting() || ! file.existsAsFile())
        return false;

    auto stream = file.createInputStream();

    if (stream == nullptr)
        return false;

    archive = BoundedZip::open (std::move (stream), bounds);

    if (archive == nullptr)
        return false;

    source = &into;
    nextEntry = numImported = 0;
    replaceAll = skipAll = false;
    startTimer (pauseMs);
    return true;
}

void PackageImportExport::timerCallback()
{
    const auto end = juce::Time::getMillisecondCounterHiRes() + sliceMs;

    do
    {
        const auto step = importNext();

        if (step == Step::finished)
            return finish();

        if (step == Step::wait)
            return stopTimer();
    } while (juce::Time::getMillisecondCounterHiRes() < end);

    listener.importProgressed (nextEntry, archive->getNumEntries());
}

PackageImportExport::Step PackageImportExport::importNext()
{
    if (nextEntry >= archive->getNumEntries())
        return Step::finished;

    const auto index = nextEntry++;
    const auto name = archive->getEntryName (index);

    if (extensionOf (name) != source->getItemExtension())
        return Step::next;

    entryStream = archive->openEntry (index, bounds.memberBytes);

    if (entryStream == nullptr)
        return Step::next; // damaged, or larger than it may be

    entryStem = itemName = stemOf (name);
    return importEntry();
}

PackageImportExport::Step PackageImportExport::importEntry()
{
    // By its file too: different names can stand for one.
    const auto file = source->getItemFile (itemName);
    const auto existing = source->containsItem (itemName) || file.existsAsFile();

    if (! existing)
        addEntry();
    else if (replaceAll)
        replaceExisting();
    else if (! skipAll)
    {
        dialog = std::make_unique<K7R::ReplaceAlertWindow> (static_cast<K7R::AlertWindow::Caller*> (this),
                                                            "Import - " + entryStem, itemName,
                                                            source->uniqueItemName (itemName));
        dialog->show (parent);
        return Step::wait;
    }

    return Step::next;
}

void PackageImportExport::addEntry()
{
    if (auto* item = source->addItemFromStream (*entryStream, itemName))
    {
        ++numImported;
        listener.itemImported (*item, true);
    }
}

void PackageImportExport::replaceExisting()
{
    auto* old = source->findItem (itemName);

    if (old == nullptr)
        old = source->findItem (source->getItemFile (itemName).getFileNameWithoutExtension());

    if (old == nullptr)
        return;

    if (auto* item = source->replaceItemFromStream (*old, *entryStream))
    {
        ++numImported;
        listener.itemImported (*item, false);
    }
}

void PackageImportExport::alertClosed (K7R::AlertWindow*, int result)
{
    using K7R::AlertWindow;

    const auto answered = std::move (dialog);
    auto step = Step::next;

    switch (result)
    {
        case AlertWindow::replaceAll: replaceAll = true; [[fallthrough]];
        case AlertWindow::replace: replaceExisting(); break;
        case AlertWindow::skipAll: skipAll = true; break;
        case AlertWindow::skip: break;

        case AlertWindow::rename:
            itemName = answered->getNewName();
            step = importEntry();
            break;

        default: return finish();
    }

    if (step != Step::wait)
        startTimer (pauseMs);
}

void PackageImportExport::stop()
{
    dialog.reset();

    if (isImporting())
        finish();
}

void PackageImportExport::finish()
{
    stopTimer();
    archive.reset();
    entryStream.reset();
    listener.importFinished (numImported);
}

//==============================================================================
bool PackageImportExport::exportItems (const std::vector<ContentItem*>& items, const juce::File& target)
{
    juce::ZipFile::Builder builder;
    int numFiles = 0;

    for (const auto* item : items)
        if (const auto file = item->source->getItemFile (item->name); file.existsAsFile())
        {
            builder.addFile (file, 0);
            ++numFiles;
        }

    if (numFiles == 0 || target.isDirectory())
        return false;

    // What stands there goes when the archive is complete.
    const juce::TemporaryFile temporary (
        target, target.getSiblingFile ("." + juce::Uuid().toString().substring (0, 16) + ".tmp"));

    {
        juce::FileOutputStream stream (temporary.getFile(), bufferBytes);

        if (stream.failedToOpen() || ! builder.writeToStream (stream, nullptr))
            return false;

        stream.flush();

        // A disk that fills up can take a part of the last write without an error.
        if (stream.getStatus().failed() || temporary.getFile().getSize() != stream.getPosition())
            return false;
    }

    return renameFile (temporary.getFile(), target);
}

} // namespace quilvane
