// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include "browser/BrowserContent.h"
#include "content/BoundedZip.h"
#include "widgets/ReplaceAlertWindow.h"

namespace quilvane
{

/** Exchanges items with other machines as plain ZIP archives of their files.

    An import goes through the archive member by member, in slices of the message loop's time, and stops at each name
    that is taken to ask. What can't be read or written is passed over. Nothing but files of the source's own folder,
    under names that it makes of the members', is ever written.
*/
class PackageImportExport final : private juce::Timer, private K7R::AlertWindow::Caller
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
        virtual void importFinished (int numImported) = 0;
    };

    /** @param windowsParent what the questions are shown on */
    PackageImportExport (juce::Component& windowsParent, Listener&);
    ~PackageImportExport() override;

    /** Begins to import; nothing if the file is no archive that we take, or while one is being imported.
        @returns whether it began */
    bool startImport (const juce::File&, ContentSource& into);
    bool isImporting() const noexcept { return archive != nullptr; }

    /** Ends an import before its time; what has been imported stays. */
    void stop();

    /** Writes the files of items into an archive, as a whole or not at all.
        @returns whether it stands */
    static bool exportItems (const std::vector<ContentItem*>&, const juce::File&);

private:
    enum class Step
    {
        next,
        wait, // for an answer
        finished,
    };

    void timerCallback() override;
    void alertClosed (K7R::AlertWindow*, int result) override;
    Step importNext();
    Step importEntry();
    void replaceExisting();
    void addEntry();
    void finish();

    juce::Component& parent;
    Listener& listener;
    ContentSource* source = nullptr;
    std::unique_ptr<BoundedZip> archive;
    int nextEntry = 0, numImported = 0;
    std::unique_ptr<juce::InputStream> entryStream;
    juce::String entryStem, itemName;
    bool replaceAll = false, skipAll = false;
    std::unique_ptr<K7R::ReplaceAlertWindow> dialog;
};

} // namespace quilvane
