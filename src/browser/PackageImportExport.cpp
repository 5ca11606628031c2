// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/PackageImportExport.h"

#include "support/SafeFile.h"

namespace K7R
{

namespace
{

constexpr int mostMembersCounted = 1000; // for a question, which has to come at once
constexpr int highestNumber = 1000;      // behind a name that comes several times

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

PackageImportExport::PackageImportExport (juce::Component& windowsParent, SlicedTask& sharedTask, Listener& toTell) :
    parent (windowsParent),
    task (sharedTask),
    listener (toTell)
{
}

//==============================================================================
bool PackageImportExport::startImport (const juce::File& file, ContentSource& into)
{
    if (task.isRunning() || ! isRegularFile (file))
        return false;

    auto stream = file.createInputStream();

    if (stream == nullptr)
        return false;

    archive = BoundedZip::open (std::move (stream), bounds);

    if (archive == nullptr)
        return false;

    source = &into;
    nextEntry = 0;
    counts = {};
    importedNames.clear();
    replaceAll = skipAll = false;
    task.start ({ [this] { return importNext(); },
                  [this] { listener.importProgressed (nextEntry, archive->getNumEntries()); },
                  [this] (bool wasStopped) { finish (wasStopped); } });
    return true;
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
    {
        ++counts.failed; // damaged, or larger than it may be
        return Step::next;
    }

    entryStem = stemOf (name);
    itemName = nameFor (entryStem);
    return importEntry();
}

juce::String PackageImportExport::nameFor (const juce::String& stem) const
{
    const auto isImported = [this] (const juce::String& name) { return importedNames.count (name.toLowerCase()) != 0; };
    const auto kept = source->keepableName (stem);
    auto name = kept;

    // Members whose names meet are different items all the same. The numbers begin anew with each import, so that
    // they meet the same items when an archive is imported again.
    for (int number = 1; isImported (name); ++number)
    {
        if (number > highestNumber)
            return source->uniqueItemName (kept);

        name = source->keepableName (kept + " (" + juce::String (number) + ")");
    }

    return name;
}

PackageImportExport::Step PackageImportExport::importEntry (const juce::String& mayReplace)
{
    using Kind = ContentPlacement::Kind;

    const auto placement = source->place (itemName);

    if (placement.kind == Kind::free)
        take (source->addItemFromStream (*entryStream, itemName), true);
    else if (placement.kind != Kind::sameItem)
        ++counts.failed;
    else if (replaceAll || placement.name == mayReplace)
    {
        const auto isNew = ! source->containsItem (itemName);
        take (source->replaceItemFromStream (itemName, *entryStream), isNew);
    }
    else if (skipAll)
        ++counts.skipped;
    else
        return ask (placement.name);

    return Step::next;
}

void PackageImportExport::take (ContentItem* item, bool isNew)
{
    if (item == nullptr)
    {
        ++counts.failed;
        return;
    }

    ++counts.imported;
    counts.renamed += item->name.equalsIgnoreCase (entryStem) ? 0 : 1;
    importedNames.insert (item->name.toLowerCase());
    listener.itemImported (*item, isNew);
}

PackageImportExport::Step PackageImportExport::ask (const juce::String& takenName)
{
    askedName = takenName;
    dialog = std::make_unique<ReplaceAlertWindow> (static_cast<AlertWindow::Caller*> (this), "Import - " + entryStem,
                                                   askedName, describeOthers(), source->uniqueItemName (itemName));
    dialog->show (parent);
    return Step::wait;
}

juce::String PackageImportExport::describeOthers() const
{
    std::set<juce::String> names;
    int numMembers = 0, numTaken = 0;

    for (const auto& item : source->getItems())
        if (const auto name = item->name.toLowerCase(); importedNames.count (name) == 0)
            names.insert (name);

    for (auto index = nextEntry; index < archive->getNumEntries(); ++index)
    {
        const auto name = archive->getEntryName (index);

        if (extensionOf (name) != source->getItemExtension())
            continue;

        if (++numMembers > mostMembersCounted)
            return "at least " + juce::String (numTaken) + " more";

        numTaken += static_cast<int> (names.count (source->keepableName (stemOf (name)).toLowerCase()));
    }

    return numTaken > 0 ? juce::String (numTaken) + " more" : juce::String();
}

void PackageImportExport::alertClosed (AlertWindow*, int result)
{
    const auto answered = std::move (dialog);
    auto step = Step::next;

    switch (result)
    {
        case AlertWindow::replaceAll: replaceAll = true; [[fallthrough]];
        case AlertWindow::replace: step = importEntry (askedName); break;
        case AlertWindow::skipAll: skipAll = true; [[fallthrough]];
        case AlertWindow::skip: ++counts.skipped; break;

        case AlertWindow::rename:
            if (const auto name = source->keepableName (answered->getNewName()); name.isNotEmpty())
            {
                itemName = name;
                step = importEntry();
            }
            else
                step = ask (askedName);

            break;

        default: return task.stop();
    }

    if (step != Step::wait)
        task.resume();
}

void PackageImportExport::finish (bool wasStopped)
{
    dialog.reset();
    archive.reset();
    entryStream.reset();
    listener.importFinished (counts, wasStopped);
}

} // namespace K7R
