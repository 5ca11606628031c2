// SPDX-License-Identifier: GPL-3.0-or-later

// The editor's own windows and popups as a person uses them: MIDI learn, options, files, warnings.

// Under sanitizers GCC takes parts of std::regex for uninitialised.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"

#include <csignal>
#include <functional>
#include <regex>

#include <sys/resource.h>

#include "EditorWindow.h"

namespace
{

using testskin::Place;

/** Where the editor puts what no skin places: its layouts in numbers, and nowhere else in these tests. */
namespace layout
{

constexpr Place within (const Place& outer, const Place& inner)
{
    return { outer.x + inner.x, outer.y + inner.y, inner.width, inner.height };
}

// A parameter's information hangs from the middle of the control.
constexpr Place info { testskin::feedbackKnob.place.centreX(), testskin::feedbackKnob.place.centreY(), 292, 152 };
constexpr Place learn = within (info, { 10, 120, 76, 22 }), clear = within (info, { 90, 120, 58, 22 });
constexpr Place ok = within (info, { 162, 120, 58, 22 }), cancel = within (info, { 224, 120, 58, 22 });
constexpr Place closeInfo = within (info, { 264, 12, 18, 18 });
constexpr Place freeCornerOfKnob { testskin::feedbackKnob.place.x, testskin::feedbackKnob.place.y, 10, 10 };

/** A framed window in the middle of the panel. */
constexpr Place centred (int width, int height)
{
    return { (testskin::width - width) / 2, (testskin::height - height) / 2, width, height };
}

constexpr Place closeButtonOf (const Place& window)
{
    return within (window, { window.width - 26, 5, 20, 20 });
}

/** An item of two lists of qualities, below each other. */
constexpr Place quality (const Place& corner, int list, int item)
{
    return within (corner, { 130, list * 50 + 1 + item * 20, 110, 20 });
}

constexpr Place options = centred (560, testskin::height * 8 / 10);
constexpr Place defaultQualities = within (options, { 9 + 14, 37 + 26 + 14, 0, 0 });
constexpr Place about = centred (420 + 18, 384 + 52);
constexpr Place aboutsTextButton = within (about, { about.width - 9 - 84, about.height - 12 - 22, 84, 22 });

// The status bar's buttons, once a click has hidden the build's text at its right end.
constexpr int barHeight = 16;
constexpr Place buildText { testskin::width - 20, testskin::height, 20, barHeight };
constexpr Place guiButton { testskin::width - 52, testskin::height, 52, barHeight };
constexpr Place midiButton { guiButton.x - 58, testskin::height, 58, barHeight };
constexpr Place qualityButton { midiButton.x - 130, testskin::height, 130, barHeight };

/** A popup of the bar ends where its button does. */
constexpr Place above (const Place& button, int width, int height)
{
    return { button.x + button.width - width, testskin::height - height, width, height };
}

constexpr Place qualityPopup = above (qualityButton, 240 + 20, 92 + 20);
constexpr Place midiPopup = above (midiButton, 172 + 20, 52 + 20), guiPopup = above (guiButton, 172 + 20, 52 + 20);
constexpr Place qualities = within (qualityPopup, { 10, 10, 0, 0 });
constexpr Place loadButton = within (midiPopup, { 10, 40, 82, 22 });
constexpr Place saveButton = within (midiPopup, { 100, 40, 82, 22 });

constexpr Place nothing { 600, 250, 10, 10 }; // the panel's ground, besides all of these
constexpr uint32_t popupGround = 0x3a3a3a;

} // namespace layout

class EditorPopups : public EditorWindow
{
protected:
    EditorPopups()
    {
        files::create_directories (home);
        setenv ("HOME", home.c_str(), 1);
    }

    ~EditorPopups() override { setenv ("HOME", homeBefore.c_str(), 1); }

    //==============================================================================
    /** Whether the panel is dimmed, as it is below a window of the editor. */
    static bool isCovered (HostWindow& window) { return window.getPixel (1, 1) != testskin::background; }

    static bool waitForCover (HostWindow& window, bool covered = true)
    {
        return window.waitFor ([&] { return isCovered (window) == covered; });
    }

    static bool shows (HostWindow& window, const Place& popup)
    {
        return window.getPixel (popup.x + 4, popup.y + 4) == layout::popupGround;
    }

    static bool waitForPopup (HostWindow& window, const Place& popup, bool shown = true)
    {
        return window.waitFor ([&] { return shows (window, popup) == shown; });
    }

    static void openInfo (HostWindow& window)
    {
        window.click (testskin::feedbackKnob.place, TestScreen::rightButton);
        ASSERT_TRUE (waitForPopup (window, layout::info));
    }

    static void typeText (HostWindow& window, const std::string& text)
    {
        for (const auto character : text)
            window.type (character == '.' ? "period" : std::string (1, character).c_str());
    }

    //==============================================================================
    /** What a host keeps, from its first '<' on. */
    static std::string stateOf (Instance& instance)
    {
        const auto chunk = instance.getChunk();
        const std::string text (chunk.begin(), chunk.end());
        return text.substr (std::min (text.size(), text.find ('<')));
    }

    /** All matches of an expression, its groups with a space between them. */
    static std::string findAll (const std::string& text, const std::string& expression)
    {
        const std::regex regex (expression);
        std::string found;

        for (std::sregex_iterator match (text.begin(), text.end(), regex), end; match != end; ++match)
        {
            found += found.empty() ? "" : ", ";

            for (size_t i = 1; i < match->size(); ++i)
                found += (i > 1 ? " " : "") + (*match)[i].str();
        }

        return found;
    }

    /** The map of controllers in a document: "10 FX, 11 Feedback". */
    static std::string mapIn (const std::string& text)
    {
        return findAll (text, "<assign CC=\"(\\d+)\" param=\"([^\"]*)\"/>");
    }

    static std::string mapOf (Instance& instance) { return mapIn (stateOf (instance)); }

    static std::string mapDocument (int controllerOfFX, int controllerOfFeedback,
                                    const std::string& product = "Quilvane 2")
    {
        return "<MidiControlMap name=\"" + product + "\"><assign CC=\"" + std::to_string (controllerOfFX)
               + "\" param=\"FX\"/><assign CC=\"" + std::to_string (controllerOfFeedback)
               + "\" param=\"Feedback\"/></MidiControlMap>";
    }

    /** Gives the instance a project with FX and the feedback at these controllers. */
    static void loadProject (Instance& instance, int controllerOfFX, int controllerOfFeedback = 20)
    {
        const auto text = "<PluginState application=\"Quilvane 2\">"
                          + mapDocument (controllerOfFX, controllerOfFeedback) + "</PluginState>";
        std::vector<char> chunk { 'V', 'C', '2', '!' };

        for (int byte = 0; byte < 4; ++byte)
            chunk.push_back (static_cast<char> (text.size() >> (8 * byte)));

        chunk.insert (chunk.end(), text.begin(), text.end());
        chunk.push_back (0);
        instance.setChunk (chunk);
    }

    /** Moves a controller until the map is this one. */
    static bool control (HostWindow& window, int controller, int value, const std::string& map)
    {
        auto& instance = window.getInstance();
        rawhost::MidiEvent event;
        event.data[0] = 0xb0;
        event.data[1] = static_cast<unsigned char> (controller);
        event.data[2] = static_cast<unsigned char> (value);

        return window.waitFor (
            [&]
            {
                instance.sendMidi ({ event });
                processSome (instance, 0.0f, 64);
                return mapOf (instance) == map;
            });
    }

    std::string settings() const { return textOf (folder / "Quilvane 2_user" / "Quilvane 2.ini"); }

    static std::string textOf (const files::path& file)
    {
        std::ifstream stream (file);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    static void write (const files::path& file, const std::string& text) { std::ofstream (file) << text; }

    /** Opens the chooser for a file. */
    static void openChooser (HostWindow& window, const Place& button)
    {
        window.click (layout::midiButton);
        ASSERT_TRUE (waitForPopup (window, layout::midiPopup));
        window.click (button);
        ASSERT_TRUE (waitForCover (window));
    }

    static void choose (HostWindow& window, const Place& button, const std::string& name)
    {
        openChooser (window, button);
        typeText (window, name);
        window.type ("Return");
    }

    /** Opens the editor, with the status bar's buttons where the layout has them. */
    static void openWithBar (HostWindow& window)
    {
        ASSERT_TRUE (window.openAndSee());
        window.click (layout::buildText);
        window.settle();
    }

    const files::path home = folder / "home";
    const std::string homeBefore = getenv ("HOME");
};

constexpr const char* initialMap = "10 FX, 20 Feedback";

} // namespace

//==============================================================================
TEST_F (EditorPopups, LearnsTheLastControllerAndKeepsItWithOk)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());
    loadProject (instance, 10);

    openInfo (window);
    window.click (layout::learn);
    ASSERT_TRUE (control (window, 10, 127, "10 Feedback"));
    EXPECT_EQ (instance.value (feedback), 1.0f);
    ASSERT_TRUE (control (window, 11, 64, "10 FX, 11 Feedback"));
    EXPECT_NEAR (instance.value (feedback), 64.0f / 127.0f, near);

    // The learn runs on when the control is asked for once more.
    window.click (layout::freeCornerOfKnob, TestScreen::rightButton);
    window.settle();
    EXPECT_TRUE (shows (window, layout::info));
    ASSERT_TRUE (control (window, 12, 0, "10 FX, 12 Feedback"));

    window.click (layout::ok);
    ASSERT_TRUE (waitForPopup (window, layout::info, false));
    EXPECT_TRUE (control (window, 13, 0, "10 FX, 12 Feedback"));
    ASSERT_TRUE (control (window, 12, 127, "10 FX, 12 Feedback"));
    EXPECT_EQ (instance.value (feedback), 1.0f);
    expectWholeDrag (window);
}

TEST_F (EditorPopups, EveryOtherWayOutLeavesTheControllersAsTheyWere)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    struct Way
    {
        const char* name;
        bool closes;
        std::function<void()> leave;
    };

    const Way ways[] {
        { "Cancel", false, [&] { window.click (layout::cancel); } },
        { "Escape", false, [&] { window.type ("Escape"); } },
        { "a click outside", true, [&] { window.click (layout::nothing); } },
        { "the close icon", true, [&] { window.click (layout::closeInfo); } },
        { "another control", true, [&] { window.click (testskin::syncButton.place, TestScreen::rightButton); } },
        { "the host's window", true,
          [&]
          {
              window.close();
              ASSERT_TRUE (window.openAndSee());
          } },
    };

    const auto leave = [&] (const Way& way, const std::string& map)
    {
        way.leave();
        EXPECT_TRUE (window.waitFor ([&] { return mapOf (instance) == map; }, 3s)) << way.name << mapOf (instance);

        // What undoes doesn't close as well, so that the user sees it.
        window.settle();
        EXPECT_EQ (mapOf (instance), map) << way.name;

        for (int i = 0; i < 2; ++i)
        {
            window.type ("Escape");
            window.settle();
        }

        EXPECT_FALSE (shows (window, layout::info)) << way.name;
        EXPECT_TRUE (control (window, 30, 64, map)) << "the learn goes on after " << way.name;
    };

    for (const auto& way : ways)
    {
        loadProject (instance, 10);
        openInfo (window);
        window.click (layout::learn);
        ASSERT_TRUE (control (window, 10, 127, "10 Feedback")) << way.name;
        leave (way, initialMap);

        openInfo (window);
        window.click (layout::clear);
        ASSERT_TRUE (window.waitFor ([&] { return mapOf (instance) == "10 FX"; })) << way.name;
        leave (way, initialMap);

        // A project that comes in meanwhile has a map of its own, and nothing of the one before returns.
        for (const auto learns : { true, false })
        {
            loadProject (instance, 10);
            openInfo (window);

            if (learns)
            {
                window.click (layout::learn);
                ASSERT_TRUE (control (window, 11, 127, "10 FX, 11 Feedback")) << way.name;
            }
            else
            {
                window.click (layout::clear);
                ASSERT_TRUE (window.waitFor ([&] { return mapOf (instance) == "10 FX"; })) << way.name;
            }

            loadProject (instance, 15, 25);
            leave (way, "15 FX, 25 Feedback");
        }
    }

    expectWholeDrag (window);
}

TEST_F (EditorPopups, TheLearnButtonTakesAClickOnAControl)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());
    loadProject (instance, 10);

    window.click (testskin::midiLearnButton.place);
    ASSERT_TRUE (waitForCover (window));
    instance.clearAutomations();
    window.click (testskin::feedbackKnob.place);
    ASSERT_TRUE (waitForPopup (window, layout::info));
    EXPECT_FALSE (isCovered (window));
    EXPECT_TRUE (instance.getAutomations().empty()) << "the click chooses, and moves nothing";
    ASSERT_TRUE (control (window, 11, 64, "10 FX, 11 Feedback"));
    window.type ("Return");
    ASSERT_TRUE (waitForPopup (window, layout::info, false));
    EXPECT_EQ (mapOf (instance), "10 FX, 11 Feedback");

    // Left with the key, beside all controls, and where the button is.
    for (const auto& leave : { std::function<void()> ([&] { window.type ("Escape"); }),
                               std::function<void()> ([&] { window.click (layout::nothing); }),
                               std::function<void()> ([&] { window.click (testskin::midiLearnButton.place); }) })
    {
        window.click (testskin::midiLearnButton.place);
        ASSERT_TRUE (waitForCover (window));
        leave();
        EXPECT_TRUE (waitForCover (window, false));
        EXPECT_TRUE (control (window, 12, 64, "10 FX, 11 Feedback"));
        expectWholeDrag (window);
    }
}

//==============================================================================
TEST_F (EditorPopups, WindowsBlockThePanelUntilTheyAreClosed)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    struct Case
    {
        const testskin::Strip& opener;
        std::function<void()> close;
    };

    const auto clicks = [&] (const Place& place) { return [&window, place] { window.click (place); }; };
    const auto escapes = [&] { window.type ("Escape"); };
    const auto& options = testskin::optionsButton;
    const auto& about = testskin::aboutButton;

    for (const auto& [opener, close] :
         { Case { options, escapes }, Case { options, clicks (layout::closeButtonOf (layout::options)) },
           Case { about, escapes }, Case { about, clicks (layout::closeButtonOf (layout::about)) },
           Case { about, clicks (layout::aboutsTextButton) } })
    {
        window.click (opener.place);
        ASSERT_TRUE (waitForCover (window));
        instance.clearAutomations();
        window.startDrag (testskin::feedbackKnob.place, 50);
        window.release();
        window.click (testskin::feedbackKnob.place, TestScreen::wheelUp);
        window.click (testskin::feedbackKnob.place, TestScreen::rightButton);
        window.settle();
        EXPECT_TRUE (instance.getAutomations().empty());
        EXPECT_TRUE (isCovered (window));

        close();
        ASSERT_TRUE (waitForCover (window, false)) << opener.image;
        EXPECT_FALSE (shows (window, layout::info));
        expectWholeDrag (window);
    }
}

TEST_F (EditorPopups, QualitiesAreOfNewInstancesOrOfThisOne)
{
    const auto qualitiesOf = [] (HostWindow& window)
    {
        const auto state = stateOf (window.getInstance());
        return findAll (state.substr (0, state.find ("</ProcessingQuality>")), "\"(Normal|High)\"");
    };

    {
        HostWindow window (*screen, *library);
        openWithBar (window);
        EXPECT_EQ (qualitiesOf (window), "Normal, Normal");
        window.click (testskin::optionsButton.place);
        ASSERT_TRUE (waitForCover (window));
        window.click (layout::quality (layout::defaultQualities, 0, 1));
        window.settle();
        window.type ("Escape");
        ASSERT_TRUE (waitForCover (window, false));
        EXPECT_EQ (qualitiesOf (window), "Normal, Normal");
    }

    {
        HostWindow window (*screen, *library);
        EXPECT_EQ (qualitiesOf (window), "High, Normal");
        openWithBar (window);
        window.click (layout::qualityButton);
        ASSERT_TRUE (waitForPopup (window, layout::qualityPopup));
        window.click (layout::quality (layout::qualities, 0, 0));
        window.click (layout::quality (layout::qualities, 1, 1));
        EXPECT_TRUE (window.waitFor ([&] { return qualitiesOf (window) == "Normal, High"; }));
    }

    HostWindow window (*screen, *library);
    EXPECT_EQ (qualitiesOf (window), "High, Normal");
}

TEST_F (EditorPopups, PopupsOfTheStatusBarGoWithAClickBesideThem)
{
    HostWindow window (*screen, *library);
    openWithBar (window);

    for (const auto& [button, popup] :
         { std::pair { layout::qualityButton, layout::qualityPopup },
           std::pair { layout::midiButton, layout::midiPopup }, std::pair { layout::guiButton, layout::guiPopup } })
        for (const auto& leave : { std::function<void()> ([&] { window.click (layout::nothing); }),
                                   std::function<void()> ([&, place = button] { window.click (place); }),
                                   std::function<void()> ([&] { window.type ("Escape"); }) })
        {
            window.click (button);
            ASSERT_TRUE (waitForPopup (window, popup));
            window.settle();
            ASSERT_TRUE (shows (window, popup)) << "the click that opens it isn't beside it";
            leave();
            EXPECT_TRUE (waitForPopup (window, popup, false));
            window.settle();
            EXPECT_FALSE (shows (window, popup)) << "it opens again";
        }

    window.click (layout::qualityButton);
    ASSERT_TRUE (waitForPopup (window, layout::qualityPopup));
    window.click (layout::guiButton);
    ASSERT_TRUE (waitForPopup (window, layout::guiPopup));
    EXPECT_FALSE (shows (window, layout::qualityPopup));

    // A skin that isn't there changes nothing.
    window.click (layout::within (layout::guiPopup, { 10, 40, 82, 22 }));
    ASSERT_TRUE (waitForPopup (window, layout::guiPopup, false));
    EXPECT_TRUE (waitForCover (window, false));
    expectWholeDrag (window);
}

//==============================================================================
TEST_F (EditorPopups, WarnsOfChangesUntilTheUserHasEnoughOfIt)
{
    const auto warns = [] (HostWindow& window, bool expected)
    {
        window.click (testskin::nextPresetButton.place);

        if (! expected)
            window.settle();

        return window.waitFor ([&] { return isCovered (window); }, expected ? 20s : 0s);
    };

    const auto answer = [] (HostWindow& window, std::initializer_list<const char*> keys)
    {
        for (const auto* key : keys)
        {
            window.type (key);
            window.settle();
        }

        EXPECT_TRUE (waitForCover (window, false));
    };

    {
        HostWindow window (*screen, *library);
        ASSERT_TRUE (window.openAndSee());
        EXPECT_FALSE (warns (window, false)) << "nothing is changed";
        window.getInstance().set (feedback, 0.5f);

        // Escape is "Cancel", and the key begins at "Yes", which doesn't lose the changes.
        ASSERT_TRUE (warns (window, true));
        answer (window, { "Escape" });
        ASSERT_TRUE (warns (window, true));
        answer (window, { "Return", "Escape" }); // it asks for a name, and no step follows

        ASSERT_TRUE (warns (window, true));
        answer (window, { "Tab", "Return" }); // "No"
        EXPECT_FALSE (warns (window, false)) << "what was left isn't a change any more";

        // The check box lies before the buttons.
        window.getInstance().set (feedback, 0.6f);
        ASSERT_TRUE (warns (window, true));
        screen->pressKey ("Shift_L");
        window.type ("Tab");
        screen->releaseKey ("Shift_L");
        answer (window, { "space", "Tab", "Tab", "Return" });
        window.getInstance().set (feedback, 0.7f);
        EXPECT_FALSE (warns (window, false)) << "the user doesn't want to know";
        expectWholeDrag (window);
    }

    EXPECT_EQ (findAll (settings(), "presetChangeWarning=\"(\\d+)\""), "0");

    HostWindow window (*screen, *library);
    ASSERT_TRUE (window.openAndSee());
    window.getInstance().set (feedback, 0.5f);
    EXPECT_FALSE (warns (window, false));
}

//==============================================================================
TEST_F (EditorPopups, MapsOfControllersGoThroughFiles)
{
    const auto file = home / "mine.qvccmap";

    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    openWithBar (window);
    loadProject (instance, 10);
    choose (window, layout::saveButton, "mine");
    ASSERT_TRUE (waitForCover (window, false));
    EXPECT_EQ (mapIn (textOf (file)), initialMap);

    // Over a file that is there, after a question only, to which neither Escape nor Return agree.
    loadProject (instance, 15);
    choose (window, layout::saveButton, "mine");

    for (const auto* refusal : { "Escape", "Return" })
    {
        window.settle();
        window.type (refusal);
        window.settle();
        EXPECT_TRUE (isCovered (window));
        EXPECT_EQ (mapIn (textOf (file)), initialMap) << refusal;
        window.type ("Return"); // asks again
    }

    window.settle();
    window.type ("Left");
    window.type ("Return");
    ASSERT_TRUE (waitForCover (window, false));
    EXPECT_EQ (mapIn (textOf (file)), "15 FX, 20 Feedback");

    // A full disk leaves the older file, and nothing beside it.
    loadProject (instance, 10);
    rlimit limit {};
    getrlimit (RLIMIT_FSIZE, &limit);
    const auto before = limit.rlim_cur;
    auto* const handler = signal (SIGXFSZ, SIG_IGN);
    limit.rlim_cur = 0;
    setrlimit (RLIMIT_FSIZE, &limit);
    choose (window, layout::saveButton, "mine");
    window.settle();
    window.type ("Left");
    window.type ("Return");
    EXPECT_TRUE (waitForCover (window, false));
    limit.rlim_cur = before;
    setrlimit (RLIMIT_FSIZE, &limit);
    signal (SIGXFSZ, handler);
    EXPECT_EQ (mapIn (textOf (file)), "15 FX, 20 Feedback");
    EXPECT_EQ (
        std::count_if (files::directory_iterator (home), {}, [] (auto& entry) { return entry.is_regular_file(); }), 1);

    // Cancelling changes nothing.
    openChooser (window, layout::saveButton);
    typeText (window, "other");
    window.type ("Escape");
    ASSERT_TRUE (waitForCover (window, false));
    EXPECT_FALSE (files::exists (home / "other.qvccmap"));

    // Another instance takes it, and no other document; a name that there isn't isn't taken at all.
    write (home / "damaged.qvccmap", textOf (file).substr (0, textOf (file).size() / 2));
    write (home / "foreign.qvccmap", mapDocument (1, 2, "Another"));
    HostWindow second (*screen, *library, 640, 500);
    openWithBar (second);
    choose (second, layout::loadButton, "mine.qvccmap");
    ASSERT_TRUE (waitForCover (second, false));
    EXPECT_EQ (mapOf (second.getInstance()), "15 FX, 20 Feedback");

    for (const auto* name : { "damaged.qvccmap", "foreign.qvccmap" })
    {
        choose (second, layout::loadButton, name);
        ASSERT_TRUE (waitForCover (second, false));
        EXPECT_EQ (mapOf (second.getInstance()), "15 FX, 20 Feedback") << name;
    }

    choose (second, layout::loadButton, "nothing.qvccmap");
    second.settle();
    EXPECT_TRUE (isCovered (second));
    second.type ("Escape");
    ASSERT_TRUE (waitForCover (second, false));
    EXPECT_EQ (mapOf (second.getInstance()), "15 FX, 20 Feedback");
    EXPECT_EQ (mapOf (instance), initialMap) << "the first one has its own";
}

TEST_F (EditorPopups, AFolderMayVanishUnderTheChooser)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    openWithBar (window);
    loadProject (instance, 10);

    openChooser (window, layout::saveButton);
    files::remove_all (home);
    typeText (window, "mine");
    window.type ("Return");
    ASSERT_TRUE (waitForCover (window, false));
    EXPECT_FALSE (files::exists (home));

    // From a folder that is gone.
    openChooser (window, layout::loadButton);
    typeText (window, "mine.qvccmap");
    window.type ("Return");
    window.settle();
    window.type ("Escape");
    ASSERT_TRUE (waitForCover (window, false));
    EXPECT_EQ (mapOf (instance), initialMap);
    expectWholeDrag (window);
}

//==============================================================================
TEST_F (EditorPopups, TheHostMayCloseTheWindowWhateverIsOpen)
{
    using Opener = std::function<void (HostWindow&)>;

    const auto clickAndCover = [] (HostWindow& window, const Place& place)
    {
        window.click (place);
        ASSERT_TRUE (waitForCover (window));
    };

    const std::pair<const char*, Opener> openers[] {
        { "options", [&] (auto& window) { clickAndCover (window, testskin::optionsButton.place); } },
        { "about", [&] (auto& window) { clickAndCover (window, testskin::aboutButton.place); } },
        { "alert",
          [&] (auto& window)
          {
              window.getInstance().set (feedback, 0.5f);
              clickAndCover (window, testskin::nextPresetButton.place);
          } },
        { "question over a chooser",
          [&] (auto& window)
          {
              write (home / "mine.qvccmap", "older");
              choose (window, layout::saveButton, "mine");
              window.settle();
          } },
        { "chooser", [&] (auto& window) { openChooser (window, layout::loadButton); } },
        { "popup",
          [&] (auto& window)
          {
              window.click (layout::qualityButton);
              ASSERT_TRUE (waitForPopup (window, layout::qualityPopup));
          } },
        { "layer", [&] (auto& window) { clickAndCover (window, testskin::midiLearnButton.place); } },
        { "learn",
          [&] (auto& window)
          {
              openInfo (window);
              window.click (layout::learn);
              ASSERT_TRUE (control (window, 10, 127, "10 Feedback"));
          } },
    };

    for (const auto& [name, open] : openers)
    {
        SCOPED_TRACE (name);
        HostWindow window (*screen, *library);
        openWithBar (window);
        loadProject (window.getInstance(), 10);

        open (window);
        window.close();
        openWithBar (window);
        EXPECT_FALSE (isCovered (window));
        EXPECT_FALSE (shows (window, layout::info) || shows (window, layout::qualityPopup));
        EXPECT_EQ (mapOf (window.getInstance()), initialMap);
        expectWholeDrag (window);

        // All of it can be opened once more, and go with its instance.
        open (window);
        window.destroyInstance();
    }

    EXPECT_EQ (textOf (home / "mine.qvccmap"), "older");
}
