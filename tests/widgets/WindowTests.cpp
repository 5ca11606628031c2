// SPDX-License-Identifier: GPL-3.0-or-later

// The windows, menus and messages inside the editor, without a display: what they show, where, and what they tell.

#include <functional>

#include <gtest/gtest.h>

#include "editor/AboutWindow.h"
#include "editor/StatusBar.h"
#include "parameters/IntParameter.h"
#include "support/MessageLoop.h"
#include "support/Mouse.h"
#include "support/PluginInTest.h"
#include "support/TestDesktop.h"
#include "widgets/controls/ComponentRow.h"
#include "widgets/controls/ModalTextEditor.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/windows/PopupMenuEx.h"
#include "widgets/windows/ReplaceAlertWindow.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R;
using namespace K7R::test;

namespace
{

/** Keeps what alerts told. */
struct Answers : AlertWindow::Caller
{
    void alertClosed (AlertWindow* alert, int result) override
    {
        EXPECT_FALSE (alert->isShown()) << "told before the window is off the screen";
        results.push_back (result);

        if (onAnswer != nullptr)
            onAnswer();
    }

    std::vector<int> results;
    std::function<void()> onAnswer;
};

using Results = std::vector<int>;

juce::StringArray textsOf (juce::Component& parent)
{
    juce::StringArray texts;

    for (const auto* button : allOf<juce::TextButton> (parent))
        texts.add (button->getButtonText());

    return texts;
}

/** A click on a button, by its text or its name. */
void click (juce::Component& parent, const juce::String& text)
{
    for (auto* button : allOf<juce::Button> (parent))
        if (button->getButtonText() == text || button->getName() == text)
            return Mouse (*button).click();

    ADD_FAILURE() << "no button " << text;
}

class Windows : public testing::Test
{
protected:
    bool waitForAnswer()
    {
        return runMessageLoopUntil ([this] { return ! answers.results.empty(); });
    }

    TestDesktop desktop;
    Answers answers;
};

} // namespace

//==============================================================================
TEST_F (Windows, AnAlertGivesTheCodeOfWhatClosedIt)
{
    const juce::StringArray texts { "Cancel",  "No",      "Yes",  "OK",          "Overwrite", "SaveAs",
                                    "Discard", "Replace", "Skip", "Replace All", "Skip All",  "Rename" };

    for (int code = -1; code <= texts.size(); ++code)
    {
        AlertWindow alert (&answers, "Title", "Text");
        auto& button = alert.addButton (code, false, false);
        EXPECT_EQ (button.getButtonText(), texts[code]) << code;
        alert.show (desktop);
        EXPECT_TRUE (alert.isShown());
        Mouse (button).click();
        EXPECT_EQ (std::exchange (answers.results, {}), Results { code });
        EXPECT_FALSE (alert.isShown());
    }

    const auto press = [] (juce::Component& component, int key) { return component.keyPressed (juce::KeyPress (key)); };

    {
        const auto alert = AlertWindow::open (&answers, "Title", "Text", AlertWindow::okOnly, &desktop);
        EXPECT_TRUE (press (*alert, juce::KeyPress::escapeKey));
        EXPECT_TRUE (waitForAnswer());
        EXPECT_EQ (std::exchange (answers.results, {}), Results { AlertWindow::ok });
    }

    const auto alert = AlertWindow::open (&answers, "Title", "Text", AlertWindow::yesOrNo, &desktop);
    EXPECT_EQ (textsOf (*alert), juce::StringArray ({ "Yes", "No" }));
    EXPECT_TRUE (press (*alert, juce::KeyPress::escapeKey));
    EXPECT_TRUE (waitForAnswer());
    EXPECT_EQ (std::exchange (answers.results, {}), Results { AlertWindow::no });

    alert->show (desktop);
    click (*alert, "CloseButton");
    EXPECT_EQ (std::exchange (answers.results, {}), Results { AlertWindow::cancel });

    const auto untold = AlertWindow::open (nullptr, "Title", "Text", AlertWindow::okOnly, &desktop);
    click (*untold, "OK");
    EXPECT_FALSE (untold->isShown());
    EXPECT_TRUE (answers.results.empty());
}

TEST_F (Windows, TabRunsThroughAnAlertsButtonsOnce)
{
    AlertWindow alert (nullptr, "Title", "Text");
    const auto& first = alert.addButton (AlertWindow::yes, false, true);
    auto& second = alert.addButton (AlertWindow::no, false, false);
    auto& last = alert.addButton (AlertWindow::cancel, true, false);

    const auto traverser = alert.createKeyboardFocusTraverser();
    auto* current = traverser->getNextComponent (&alert);
    EXPECT_EQ (current, &first);
    EXPECT_EQ (current = traverser->getNextComponent (current), &second);
    EXPECT_EQ (current = traverser->getNextComponent (current), &last);
    EXPECT_EQ (traverser->getNextComponent (current), nullptr);
    EXPECT_EQ (traverser->getPreviousComponent (&last), &second);
}

TEST_F (Windows, AWindowIsAsLargeAsItsContentAndNeverTooSmall)
{
    WindowComponent window ("Title");
    window.setContentSize (1, 1);
    EXPECT_EQ (window.getLocalBounds(), juce::Rectangle<int> (250, 120));

    // The frame of 3, the margins of 6 but for 9 at the bottom, and the title bar of 31.
    window.setContentSize (400, 300);
    EXPECT_EQ (window.getLocalBounds(), juce::Rectangle<int> (400 + 18, 300 + 21 + 31));
    EXPECT_EQ (window.getContentArea(), juce::Rectangle<int> (9, 37, 400, 303));
    EXPECT_EQ (allOf<juce::Button> (window)[0]->getBounds(), juce::Rectangle<int> (418 - 26, 5, 20, 20));
    EXPECT_EQ (window.getTitleTextArea().getRight(), 418 - 31);

    window.setTitleBarVisible (false);
    window.setContentSize (400, 300);
    EXPECT_EQ (window.getContentArea(), juce::Rectangle<int> (9, 9, 400, 300));
    EXPECT_TRUE (window.getTitleArea().isEmpty());
    EXPECT_FALSE (allOf<juce::Button> (window)[0]->isVisible());

    const auto small = AlertWindow::open (nullptr, "", "?", AlertWindow::okOnly, &desktop);
    EXPECT_EQ (small->getWidth(), 250);
    const auto large = AlertWindow::open (nullptr, "", juce::String::repeatedString ("wide ", 12), {}, &desktop);
    EXPECT_GT (large->getWidth(), 300);

    // The buttons lie side by side in the bottom right corner, below the text.
    AlertWindow alert (nullptr, "Title", "Text");
    auto& left = alert.addButton (AlertWindow::overwrite, false, false);
    auto& right = alert.addButton (AlertWindow::cancel, false, false);
    const auto place = [&] (auto& button) { return alert.getLocalArea (&button, button.getLocalBounds()); };
    EXPECT_EQ (place (right).getBottomRight(), alert.getContentArea().getBottomRight());
    EXPECT_EQ (place (left).getRight() + 6, place (right).getX());
    EXPECT_EQ (allOf<juce::Label> (alert)[0]->getBottom() + 10, place (left).getY());
}

TEST_F (Windows, RenamingEndsTheReplaceAlertWithTheNewNameOnly)
{
    ReplaceAlertWindow alert (&answers, "Title", "Taken", "", "Proposed");
    EXPECT_EQ (alert.getText(), "'Taken' already exists. Please choose an option:");
    EXPECT_EQ (textsOf (alert),
               juce::StringArray ({ "Replace", "Replace All", "Rename", "Skip", "Skip All", "Cancel" }));

    const auto rename = [&]() -> InputTextWindow&
    {
        click (alert, "Rename");
        EXPECT_EQ (allOf<InputTextWindow> (desktop).size(), 1u);
        return *allOf<InputTextWindow> (desktop).back();
    };

    alert.show (desktop);
    auto* input = &rename();
    EXPECT_EQ (input->getTitle(), "Rename");
    EXPECT_EQ (input->getText(), "Please enter new name");
    EXPECT_EQ (input->getInput(), "Proposed");
    EXPECT_TRUE (alert.isShown());

    // Back to the options.
    click (*input, "Cancel");
    EXPECT_TRUE (allOf<InputTextWindow> (desktop).empty());
    EXPECT_TRUE (alert.isShown());
    EXPECT_TRUE (answers.results.empty());

    input = &rename();
    allOf<juce::TextEditor> (*input)[0]->setText ("New");
    allOf<juce::TextEditor> (*input)[0]->keyPressed (juce::KeyPress (juce::KeyPress::returnKey));
    EXPECT_TRUE (waitForAnswer());
    EXPECT_EQ (std::exchange (answers.results, {}), Results { AlertWindow::rename });
    EXPECT_EQ (alert.getNewName(), "New");
    EXPECT_FALSE (alert.isShown());

    alert.show (desktop);
    click (alert, "Skip All");
    EXPECT_EQ (std::exchange (answers.results, {}), Results { AlertWindow::skipAll });

    // All that is open goes at once, with one answer.
    alert.show (desktop);
    rename();
    ModalComponent::dismissAll (desktop);
    EXPECT_EQ (answers.results, Results { AlertWindow::cancel });
    EXPECT_TRUE (allOf<InputTextWindow> (desktop).empty());
}

//==============================================================================
TEST_F (Windows, AModalComponentCoversItsDesktopAndFollowsItsSize)
{
    ModalComponent modal;
    modal.setSize (101, 51);

    juce::Component noDesktop;
    noDesktop.addChildComponent (modal);
    modal.showModal (ModalComponent::Placement::centred);
    EXPECT_FALSE (modal.isShown());
    EXPECT_EQ (modal.getParentComponent(), &noDesktop);
    EXPECT_EQ (noDesktop.getNumChildComponents(), 1);

    juce::Component below;
    below.setBounds (30, 40, 100, 100);
    desktop.addAndMakeVisible (below);
    below.addChildComponent (modal);
    modal.showModal (ModalComponent::Placement::centred);
    ASSERT_TRUE (modal.isShown());
    EXPECT_EQ (modal.getPosition(), juce::Point<int> (200 + 200 - 50, 150 + 150 - 25));
    EXPECT_EQ (desktop.getComponentAt (60, 60), modal.getParentComponent());
    EXPECT_TRUE (ModalComponent::isOnCover (modal));
    EXPECT_FALSE (ModalComponent::isOnCover (below));

    desktop.setSize (403, 301);
    EXPECT_EQ (modal.getPosition(), juce::Point<int> (100 + 100 - 50, 75 + 75 - 25));
    EXPECT_EQ (modal.getParentComponent()->getBounds(), desktop.getLocalBounds());

    // What is on the screen stays where it is.
    modal.showModal (ModalComponent::Placement::atPosition, { 1, 2 });
    EXPECT_EQ (modal.getX(), 150);

    modal.hideModal();
    EXPECT_EQ (desktop.getComponentAt (60, 60), &below);
    modal.showModal (ModalComponent::Placement::atPosition, { 5, 6 }, &below);
    EXPECT_EQ (modal.getPosition(), juce::Point<int> (35, 46));
    desktop.setSize (800, 600);
    EXPECT_EQ (modal.getPosition(), juce::Point<int> (35, 46));

    // Nothing is left on a desktop that the component leaves.
    noDesktop.addChildComponent (modal);
    EXPECT_EQ (desktop.getComponentAt (60, 60), &below);
    EXPECT_EQ (desktop.getNumChildComponents(), 1);
}

TEST_F (Windows, DismissingAllGoesFromTheTopAndBearsDeletion)
{
    std::vector<std::unique_ptr<AlertWindow>> alerts;

    for (const auto* title : { "bottom", "middle", "top" })
        alerts.push_back (AlertWindow::open (&answers, title, "Text", AlertWindow::yesOrNo, &desktop));

    juce::StringArray remaining;
    answers.onAnswer = [&]
    {
        alerts.pop_back();

        // The answer to one takes another one with it.
        if (alerts.size() == 2)
            alerts.erase (alerts.begin());

        for (const auto& alert : alerts)
            remaining.add (alert->getTitle());
    };

    ModalComponent::dismissAll (desktop);
    EXPECT_EQ (answers.results, (Results { AlertWindow::cancel, AlertWindow::cancel }));
    EXPECT_EQ (remaining, juce::StringArray ({ "middle" }));
    EXPECT_EQ (desktop.getNumChildComponents(), 0);
    ModalComponent::dismissAll (desktop);
}

//==============================================================================
TEST_F (Windows, ARowTakesTheSizeOfItsChildren)
{
    using Direction = ComponentRow::Direction;
    using Alignment = ComponentRow::Alignment;

    struct Case
    {
        Direction direction;
        Alignment alignment;
        juce::Rectangle<int> row, second;
    };

    const Case cases[] { { Direction::horizontal, Alignment::start, { 44, 20 }, { 14, 0, 30, 10 } },
                         { Direction::horizontal, Alignment::centre, { 44, 20 }, { 14, 5, 30, 10 } },
                         { Direction::horizontal, Alignment::end, { 44, 20 }, { 14, 10, 30, 10 } },
                         { Direction::vertical, Alignment::start, { 30, 34 }, { 0, 24, 30, 10 } } };

    for (const auto& [direction, alignment, size, place] : cases)
    {
        juce::Component first, second;
        ComponentRow row (direction, alignment, 4);
        EXPECT_TRUE (row.getBounds().isEmpty());
        first.setSize (10, 20);
        row.add (first);
        row.add (second);
        second.setSize (30, 10);
        EXPECT_EQ (row.getLocalBounds(), size);
        EXPECT_EQ (second.getBounds(), place);
        EXPECT_EQ (first.getPosition(), juce::Point<int>());
    }
}

//==============================================================================
namespace
{

struct Choices : PopupMenuEx::Listener
{
    void popupMenuItemChosen (PopupMenuEx& menu, int id) override
    {
        EXPECT_FALSE (menu.isOpen()) << "told before the menu is off the screen";
        ids.push_back (id);

        if (onChoice != nullptr)
            onChoice();
    }

    std::vector<int> ids;
    std::function<void()> onChoice;
};

/** The items that are seen with a tick, of all menus that are open. */
juce::StringArray tickedIn (juce::Component& desktop)
{
    juce::StringArray ticked;

    for (auto* modal : allOf<ModalComponent> (desktop))
        if (modal->isShown())
            for (const auto* button : allOf<juce::Button> (*modal))
                if (button->getToggleState())
                    ticked.add (button->getButtonText());

    return ticked;
}

} // namespace

TEST_F (Windows, AMenuHasOneTickAndTellsOneChoiceOnceItIsGone)
{
    Choices choices;
    auto menu = std::make_unique<PopupMenuEx>();
    auto subMenu = std::make_unique<PopupMenuEx>();
    subMenu->addItem (3, "Three");
    subMenu->addItem (4, "Four");
    menu->addItem (1, "One");
    menu->addItem (2, "Two", false);
    menu->addSubMenu ("More", std::move (subMenu));
    menu->addItem (5, "Five");
    menu->addListener (&choices);

    const juce::Rectangle<int> area (700, 560, 90, 20);
    menu->show (desktop, area, 3);
    EXPECT_EQ (tickedIn (desktop), juce::StringArray ({ "More" }));
    const auto place = allOf<ModalComponent> (desktop)[0]->getBounds();
    EXPECT_TRUE (desktop.getLocalBounds().contains (place));
    EXPECT_EQ (place.getBottom(), area.getY()) << "there is no room below";

    click (desktop, "More");
    EXPECT_EQ (tickedIn (desktop), juce::StringArray ({ "More", "Three" }));
    click (desktop, "Two");
    EXPECT_TRUE (menu->isOpen()) << "an item that is disabled";

    click (desktop, "Four");
    EXPECT_FALSE (menu->isOpen());
    EXPECT_TRUE (choices.ids.empty());
    EXPECT_TRUE (runMessageLoopUntil ([&] { return ! choices.ids.empty(); }));
    EXPECT_EQ (std::exchange (choices.ids, {}), std::vector<int> { 4 });
    EXPECT_EQ (menu->getTicked(), 4);

    menu->tick (1);
    EXPECT_EQ (menu->getTicked(), 1);
    menu->show (desktop, area, 5);
    EXPECT_EQ (tickedIn (desktop), juce::StringArray ({ "Five" }));

    // Two clicks before the choice is told are one choice.
    click (desktop, "One");
    click (desktop, "Five");
    runMessageLoopFor (50);
    EXPECT_EQ (std::exchange (choices.ids, {}).size(), 1u);

    // Left without one.
    menu->show (desktop, area, 0);
    EXPECT_TRUE (allOf<ModalComponent> (desktop).back()->keyPressed (juce::KeyPress (juce::KeyPress::escapeKey)));
    EXPECT_FALSE (menu->isOpen());
    menu->show (desktop, area, 0);
    ModalComponent::dismissAll (desktop);
    EXPECT_FALSE (menu->isOpen());
    runMessageLoopFor (50);
    EXPECT_TRUE (choices.ids.empty());

    choices.onChoice = [&] { menu.reset(); };
    menu->show (desktop, area, 0);
    click (desktop, "One");
    EXPECT_TRUE (runMessageLoopUntil ([&] { return menu == nullptr; }));
    EXPECT_EQ (desktop.getNumChildComponents(), 0);
}

TEST_F (Windows, ATextIsEditedOverEverythingAndGoesBack)
{
    struct Log : ModalTextEditor::ModalListener
    {
        void modalEditingFinished (ModalTextEditor&) override { told.add ("finished"); }
        void modalTextChanged (ModalTextEditor&, const juce::String& text) override { told.add (text); }
        juce::StringArray told;
    } log;

    ModalTextEditor editor;
    editor.addModalListener (&log);
    editor.startEditing();
    EXPECT_FALSE (editor.isEditing()) << "there is nothing to edit over";

    juce::Component parent;
    parent.setBounds (30, 40, 50, 10);
    desktop.addAndMakeVisible (parent);
    parent.addAndMakeVisible (editor);
    editor.setBounds (5, 6, 100, 20);
    editor.setText ("Old");

    struct Case
    {
        const char* typed;
        int key;
        const char* left;
        juce::StringArray told;
    };

    for (const auto& [typed, key, left, told] :
         { Case { "New", juce::KeyPress::returnKey, "New", { "finished", "New" } },
           Case { "New", juce::KeyPress::returnKey, "New", { "finished" } },
           Case { "Other", juce::KeyPress::escapeKey, "New", { "finished" } } })
    {
        editor.startEditing();
        EXPECT_EQ (editor.getParentComponent(), &desktop);
        EXPECT_EQ (editor.getBounds(), juce::Rectangle<int> (35, 46, 100, 20));
        EXPECT_EQ (editor.getHighlightedText(), editor.getText());
        runMessageLoopFor (10); // which tells the editor of its own text
        editor.insertTextAtCaret (typed);
        editor.keyPressed (juce::KeyPress (key));
        EXPECT_TRUE (runMessageLoopUntil ([&] { return ! editor.isEditing(); }));
        EXPECT_EQ (editor.getText(), left);
        EXPECT_EQ (editor.getParentComponent(), &parent);
        EXPECT_EQ (editor.getBounds(), juce::Rectangle<int> (5, 6, 100, 20));
        EXPECT_EQ (std::exchange (log.told, {}), told);
    }
}

//==============================================================================
TEST_F (Windows, TheStatusBarKeepsWhatIsMoreImportantForItsTime)
{
    struct Owner : StatusBar::Owner
    {
        juce::String getSkinName() const override { return {}; }
        juce::StringArray getSkinSizes() const override { return {}; }
        void switchSkin (const juce::String&) override {}
    } owner;

    PluginInTest instance;
    auto& plugin = instance.processor.getPlugin();
    StatusBar bar (plugin, owner);

    const auto waitToClear = [&] (int milliseconds)
    { return runMessageLoopUntil ([&] { return bar.getMessage().isEmpty(); }, milliseconds); };

    bar.showMessage ("important", 6, 200);
    bar.showMessage ("other", 0, 0);
    EXPECT_EQ (bar.getMessage(), "important");
    EXPECT_TRUE (waitToClear (2000));
    bar.showMessage ("other", 0, 0);
    EXPECT_EQ (bar.getMessage(), "other");

    // The same text again doesn't begin its time anew.
    bar.showMessage ("important", 6, 200);
    bar.showMessage ("important", 6, 60000);
    EXPECT_TRUE (waitToClear (2000));

    // One that stays isn't taken away by the end of another.
    bar.showMessage ("short", 6, 50);
    bar.showMessage ("stays", 6, 0);
    EXPECT_FALSE (waitToClear (200));
    bar.clearMessage();
    bar.showMessage ("other", 0, 50);
    EXPECT_EQ (bar.getMessage(), "other");
    EXPECT_TRUE (waitToClear (2000));

    // The first of its buttons shows the qualities of this instance, offline before real-time.
    bar.createButtons();
    EXPECT_EQ (textsOf (bar), juce::StringArray ({ "Normal / Normal", "MIDI", "GUI" }));
    plugin.getQualityParameters().realTime->setInt (1, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return textsOf (bar)[0] == "Normal / High"; }));
    plugin.getDefaultQualityParameters().offline->setInt (1, true);
    runMessageLoopFor (50);
    EXPECT_EQ (textsOf (bar)[0], "Normal / High");
}

TEST_F (Windows, SetBoldAndItalicLettersWithoutAFontOfTheMachine)
{
    ASSERT_FALSE (juce::Font::findAllTypefaceNames().contains ("Tahoma"))
        << "else it's the machine's font that is seen";

    struct Caller : AboutWindow::Listener
    {
        void aboutWindowClosed (AboutWindow&) override {}
    };

    DefaultLookAndFeel look;
    juce::LookAndFeel::setDefaultLookAndFeel (&look);

    {
        PluginInTest instance;
        const auto& product = instance.processor.getPlugin();
        Caller caller;
        AboutWindow about (product, {}, caller);
        auto* name = allOf<juce::HyperlinkButton> (about).front();
        auto& description = *name->getParentComponent();

        /** Compares a painted line of the window with the same text in plain letters. */
        const auto isPlain = [&] (juce::Component& painted, juce::Rectangle<int> area, const juce::String& text,
                                  float height, juce::Colour colour)
        {
            const auto shown = painted.createComponentSnapshot (area);
            juce::Image plain (juce::Image::ARGB, area.getWidth(), area.getHeight(), true);
            juce::Graphics g (plain);
            g.setColour (colour);
            g.setFont ({ "Tahoma", height, juce::Font::plain });
            g.drawText (text, plain.getBounds(), juce::Justification::centred);

            for (int y = 0; y < area.getHeight(); ++y)
                for (int x = 0; x < area.getWidth(); ++x)
                    if (shown.getPixelAt (x, y) != plain.getPixelAt (x, y))
                        return false;

            return true;
        };

        const auto rowAt = [&] (int y, int height)
        { return description.getLocalBounds().withY (y).withHeight (height); };
        const juce::Colour dark (0xff282828), grey (0xff5d5d5d);
        EXPECT_TRUE (isPlain (description, rowAt (50, 18), "Version 2.0.0 (64bit)", 12.0f, grey));
        EXPECT_FALSE (isPlain (description, rowAt (26, 24), product.getDescription(), 14.0f, dark)) << "italic";

        const juce::Font plain ("Tahoma", 18.0f, juce::Font::plain);
        EXPECT_GT (name->getWidth(), plain.getStringWidth (product.getProductName()) * 11 / 10) << "bold is wider";

        // As the heads of the browser's columns.
        HardLabel bold ({}, "CONTENT"), same ({}, "CONTENT");
        bold.setFont (plain.boldened());
        same.setFont (plain);
        const auto widthOf = [&] (juce::Label& label)
        { return look.getLabelFont (label).getStringWidth (label.getText()); };
        EXPECT_GT (widthOf (bold), widthOf (same));
    }

    juce::LookAndFeel::setDefaultLookAndFeel (nullptr);
}
