// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>
#include <set>

#include "browser/BrowserContent.h"
#include "browser/BrowserTexts.h"
#include "browser/SlicedTask.h"
#include "support/BoundedZip.h"
#include "widgets/windows/ReplaceAlertWindow.h"

namespace K7R
{

/** Exchanges items with other machines as plain ZIP archives of their files.

    An import goes through the archive member by member, as a sliced task, and stops at each name that is taken to
    ask. What can't be read or written is skipped and counted. Nothing but files of the source's own folder, under names
    that it makes of the members', is ever written.
*/
class PackageImportExport final : private AlertWindow::Caller
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** An item is new, or has another content and other tags. */
        virtual void itemImported (ContentItem&, bool isNew) = 0;

        /** The import has got so far. */
        virtual void importProgressed (int numDone, int numEntries) = 0;

        /** The import is over. The source's tags are to be collected anew. */
        virtual void importFinished (const ImportCounts&, bool wasStopped) = 0;
    };

    /** @param windowsParent what the questions are shown on
        @param sharedTask what does the work; stopping it ends an import before its time, and what has been imported
                          stays */
    PackageImportExport (juce::Component& windowsParent, SlicedTask& sharedTask, Listener&);

    /** Begins to import; nothing if the file is no archive that we take, or while the task is busy.
        @returns whether it began */
    bool startImport (const juce::File&, ContentSource& into);

    /** The most that an archive may hold. */
    static constexpr ZipBounds bounds { 256LL * 1024 * 1024, 16384, 1024 * 1024, 256LL * 1024 * 1024 };

private:
    using Step = SlicedTask::Step;

    void alertClosed (AlertWindow*, int result) override;
    Step importNext();

    /** @param mayReplace the item that the user has agreed to replace */
    Step importEntry (const juce::String& mayReplace = {});
    /** The items behind the present one that stand already, for a question. */
    juce::String describeOthers() const;
    Step ask (const juce::String& takenName);
    juce::String nameFor (const juce::String& stem) const;
    void take (ContentItem*, bool isNew);
    void finish (bool wasStopped);

    juce::Component& parent;
    SlicedTask& task;
    Listener& listener;
    ContentSource* source = nullptr;
    std::unique_ptr<BoundedZip> archive;
    int nextEntry = 0;
    ImportCounts counts;
    std::set<juce::String> importedNames; // in lower case
    std::unique_ptr<juce::InputStream> entryStream;
    juce::String entryStem, itemName, askedName;
    bool replaceAll = false, skipAll = false;
    std::unique_ptr<ReplaceAlertWindow> dialog;
};

} // namespace K7R
