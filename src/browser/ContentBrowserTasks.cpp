// SPDX-License-Identifier: GPL-3.0-or-later

// The browser's work on many files, in slices of the message loop's time.

#include <set>

#include "browser/ContentBrowser.h"
#include "browser/PackageExport.h"

namespace K7R
{

void ContentBrowser::runTask (const juce::String& verb, size_t number, const std::function<void (size_t)>& doOne,
                              const std::function<void (bool)>& onEnd)
{
    if (task.isRunning())
        return;

    const auto next = std::make_shared<size_t> (0);

    task.start ({ [=]
                  {
                      if (*next < number)
                          doOne ((*next)++);

                      return *next < number ? SlicedTask::Step::next : SlicedTask::Step::finished;
                  },
                  [=] { showProgress (verb, static_cast<int> (*next), static_cast<int> (number)); },
                  [=] (bool wasStopped)
                  {
                      onEnd (wasStopped);
                      taskEnded();
                  } });
    task.doSlice();
    updateLayout();
}

void ContentBrowser::showProgress (const juce::String& verb, int numDone, int number)
{
    setTitle (browserTitle + " - " + verb + " " + juce::String (numDone) + " of " + juce::String (number));
}

void ContentBrowser::taskEnded()
{
    setTitle (browserTitle);
    updateLayout();

    // The panels let go of the keyboard while they couldn't be used.
    if (isShowing() && hasKeyboardFocus (false))
        results.grabKeyboardFocus();
}

//==============================================================================
void ContentBrowser::assignTags (std::vector<ContentTagEditor::Change> wanted)
{
    struct Outcome
    {
        std::set<ContentSource*> sources;
        int numWritten = 0, numFailed = 0;
    };

    const auto changes = std::make_shared<const std::vector<ContentTagEditor::Change>> (std::move (wanted));
    const auto outcome = std::make_shared<Outcome>();

    const auto assign = [changes, outcome] (size_t index)
    {
        const auto& [item, tags] = (*changes)[index];
        const auto isWritten = item->source->assignTags (*item, tags);
        ++(isWritten ? outcome->numWritten : outcome->numFailed);

        if (isWritten)
            outcome->sources.insert (item->source);
    };

    runTask ("Tagging", changes->size(), assign,
             [this, changes, outcome] (bool wasStopped)
             {
                 for (auto* source : outcome->sources)
                     source->rebuildTags();

                 if (tagEditor != nullptr && (wasStopped || outcome->numFailed > 0))
                     tagEditor->refresh(); // to show what the files have

                 if (wasStopped)
                     listener.browserMessage (BrowserTexts::reportStopped ("tagged", outcome->numWritten,
                                                                           static_cast<int> (changes->size())));
                 else if (outcome->numFailed > 0)
                     listener.browserMessage (BrowserTexts::reportFailedTags (outcome->numFailed));
             });
}

void ContentBrowser::performDelete()
{
    using Items = std::vector<ContentItem*>;

    const auto unwanted = std::make_shared<const Items> (results.getList().getSelectedItems());
    const auto gone = std::make_shared<Items>();

    const auto deleteOne = [unwanted, gone] (size_t index)
    {
        auto* item = (*unwanted)[index];

        if (item->source->deleteFile (*item))
            gone->push_back (item);
    };

    runTask ("Deleting", unwanted->size(), deleteOne,
             [this, unwanted, gone] (bool wasStopped)
             {
                 releaseItems();

                 for (auto* source : content.getSources())
                     source->forgetItems (*gone);

                 rebuild (Reading::nothing, Ticks::kept);

                 const auto number = static_cast<int> (unwanted->size()), numGone = static_cast<int> (gone->size());

                 if (wasStopped)
                     listener.browserMessage (BrowserTexts::reportStopped ("deleted", numGone, number));
                 else if (numGone < number)
                     listener.browserMessage (juce::String (number - numGone) + " of the files couldn't be deleted");

                 if (isShowing())
                     results.grabKeyboardFocus();
             });
}

void ContentBrowser::exportTo (const juce::File& file)
{
    exportDirectory = file.getParentDirectory();

    const auto archive = std::make_shared<PackageExport> (file);
    const auto items = std::make_shared<std::vector<ContentItem*>>();

    for (auto* item : results.getList().getSelectedItems())
        if (item->source == content.currentSource)
            items->push_back (item);

    const auto add = [archive, items] (size_t index) { archive->add (*(*items)[index]); };

    runTask ("Exporting", items->size(), add,
             [this, archive, items] (bool wasStopped)
             {
                 const auto number = static_cast<int> (items->size());

                 if (wasStopped)
                     listener.browserMessage ("Export stopped: nothing was written");
                 else if (! archive->write())
                     listener.browserMessage ("'" + archive->getTarget().getFullPathName() + "' couldn't be written");
                 else
                     listener.browserMessage ("Exported: " + archive->getTarget().getFileName()
                                              + (archive->getNumFiles() < number
                                                     ? ", with " + juce::String (archive->getNumFiles()) + " of "
                                                           + juce::String (number) + " presets"
                                                     : juce::String()));
             });
}

//==============================================================================
void ContentBrowser::importFile (const juce::File& file)
{
    if (content.currentSource == nullptr)
        return;

    importDirectory = file.getParentDirectory();
    imported.clear();

    if (! importer.startImport (file, *content.currentSource))
        return listener.browserMessage ("'" + file.getFileName() + "' is no archive of presets");

    results.selectItem (nullptr, false);
    updateLayout();
}

void ContentBrowser::itemImported (ContentItem& item, bool isNew)
{
    if (isNew)
        content.insert (item);

    imported.push_back (BrowserContent::keyOf (&item));
}

void ContentBrowser::importProgressed (int numDone, int numEntries)
{
    showProgress ("Importing", numDone, numEntries);
}

void ContentBrowser::importFinished (const ImportCounts& counts, bool wasStopped)
{
    content.currentSource->rebuildTags();
    rebuild (Reading::nothing);
    results.flush();
    results.selectKeys (imported);
    listener.browserMessage (BrowserTexts::reportImport (counts, wasStopped));
    taskEnded();
}

} // namespace K7R
