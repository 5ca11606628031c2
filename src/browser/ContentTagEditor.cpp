// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentTagEditor.h"

#include <algorithm>

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

using State = TagAssignment::State;

ContentTagEditor::ContentTagEditor (BrowserContent& shared, Purpose itsPurpose, bool mayAddTags,
                                    const TagSet& tagsToBegin, std::function<void (std::vector<Change>)> changed) :
    content (shared),
    purpose (itsPurpose),
    canAddTags (mayAddTags),
    initialTags (tagsToBegin),
    onChange (std::move (changed)),
    header ("EDIT TAGS", nullptr, mayAddTags ? &addCategoryButton : nullptr)
{
    setTitle ("Edit tags");
    Icons::setUp (addCategoryButton, Icons::Name::plus, "Add category");
    addCategoryButton.onClick = [this]
    {
        question = Question::newCategory;
        ask ("New Category", "Enter name:", "New Category");
    };
    addAndMakeVisible (header);
    addAndMakeVisible (container);
    takeTags();
    ContentTagEditor::handleAsyncUpdate();
}

ContentTagEditor::~ContentTagEditor()
{
    cancelPendingUpdate();
}

void ContentTagEditor::setItems (std::vector<ContentItem*> newItems)
{
    items = std::move (newItems);
    takeTags();
}

void ContentTagEditor::releaseItems()
{
    setItems ({});
}

void ContentTagEditor::setTags (const TagSet& tags)
{
    initialTags = tags;
    takeTags();
}

void ContentTagEditor::takeTags()
{
    // At once: a click that comes before the columns are made anew is for these items.
    itemTags.clear();

    for (const auto* item : items)
        itemTags.push_back (item->tags);

    assignment.reset (items, purpose == Purpose::saveAs ? initialTags : TagSet());
    triggerAsyncUpdate();
}

//==============================================================================
void ContentTagEditor::handleAsyncUpdate()
{
    auto wanted = content.getVocabulary();
    wanted.merge (newTags);

    if (wanted != shownTags)
    {
        shownTags = wanted;
        container.setNumColumns (static_cast<int> (shownTags.getCategories().size()));

        if (auto* parent = getParentComponent())
            parent->resized();
    }

    container.refresh();
}

std::unique_ptr<CategoryComponent> ContentTagEditor::createColumn (int index)
{
    auto column = std::make_unique<CategoryComponent> (shownTags.getCategories()[static_cast<size_t> (index)].name,
                                                       CategoryComponent::Mode::editor,
                                                       static_cast<CategoryComponent::Listener&> (*this));
    column->setAddVisible (canAddTags);
    return column;
}

void ContentTagEditor::fillColumn (int index, CategoryComponent& column)
{
    const auto isActive = purpose == Purpose::saveAs || ! items.empty();
    const auto& category = shownTags.getCategories()[static_cast<size_t> (index)];
    std::vector<CategoryComponent::Item> shown;

    for (const auto& tag : category.tags)
    {
        const auto initial = assignment.getInitialState (category.name, tag);
        const auto isTriple = initial == State::mixed;
        const auto number = [&] (State state) {
            return state == State::off ? 0 : state == State::mixed ? 1 : isTriple ? 2 : 1;
        };

        shown.push_back ({ tag, isActive ? number (assignment.getState (category.name, tag)) : 0,
                           ! isActive ? 1
                           : isTriple ? 3
                                      : 2,
                           isActive ? number (initial) : 0 });
    }

    column.setItems (std::move (shown));
}

void ContentTagEditor::categoryItemClicked (CategoryComponent& column, int itemIndex)
{
    assignment.toggle (column.getCategory(), column.getItems()[static_cast<size_t> (itemIndex)].tag);
    container.refresh();
    apply();
}

void ContentTagEditor::apply()
{
    std::vector<Change> changes;

    for (size_t i = 0; i < items.size(); ++i)
        if (auto wanted = assignment.tagsFor (itemTags[i]); wanted != items[i]->tags)
            changes.push_back ({ items[i], std::move (wanted) });

    if (! changes.empty())
        onChange (std::move (changes));
}

//==============================================================================
void ContentTagEditor::ask (const juce::String& title, const juce::String& text, const juce::String& name)
{
    input = std::make_unique<InputTextWindow> (static_cast<AlertWindow::Caller*> (this), title, text, name);
    input->show (*this);
}

void ContentTagEditor::categoryAddClicked (CategoryComponent& column)
{
    question = Question::newTag;
    pendingCategory = column.getCategory();
    ask ("New Tag", "Enter name:", "New Tag");
}

void ContentTagEditor::alertClosed (AlertWindow*, int result)
{
    const auto answered = std::move (input);

    if (result != AlertWindow::ok)
        return;

    // These would end a name in a file.
    const auto name = answered->getInput().removeCharacters (":;|").trim();
    const auto& categories = shownTags.getCategories();

    if (name.isEmpty())
        return;

    if (question == Question::newCategory)
    {
        const auto isKnown =
            std::any_of (categories.begin(), categories.end(), [&] (const auto& c) { return c.name == name; });

        if (isKnown)
            return ask ("New Category", "Category with that name already exists. Enter name:", name);

        // A category can't be without a tag.
        pendingCategory = name;
        question = Question::firstTag;
        return ask ("First Tag", "Enter name:", "New Tag");
    }

    if (shownTags.contains (pendingCategory, name))
        return ask ("New Tag", "Tag with that name already exists. Enter name:", name);

    addTag (pendingCategory, name);
}

void ContentTagEditor::addTag (const juce::String& category, const juce::String& tag)
{
    newTags.add (category, tag);
    assignment.toggle (category, tag);
    apply();

    if (purpose == Purpose::saveAs)
        setTags (assignment.getCommonTags());
    else
        triggerAsyncUpdate();
}

//==============================================================================
void ContentTagEditor::resized()
{
    constexpr int belowHeader = 1;
    header.setBounds (getLocalBounds().removeFromTop (HeaderComponent::height));
    container.setBounds (getLocalBounds().withTrimmedTop (HeaderComponent::height + belowHeader));
}

void ContentTagEditor::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::windowFrameId));
}

} // namespace K7R
