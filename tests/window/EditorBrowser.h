// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <optional>

#include "EditorWindow.h"

using testskin::Place;

/** Where the browser has its parts, in the editor's coordinates: its layout in numbers, and nowhere else here. */
namespace layout
{

// The window fills the panel up to whole rows; its content stands within frame, title and margins.
inline constexpr int rowHeight = 20, roomAroundRows = 39;
inline constexpr int height = (testskin::wideHeight - roomAroundRows) / rowHeight * rowHeight + roomAroundRows;
inline constexpr Place content { 9, 37, testskin::wideWidth - 18, height - 49 };
inline constexpr int right = content.x + content.width, header = 20, gap = 4, scrollBar = 10;

inline constexpr int sourcesWidth = 140, columnWidth = 144, numColumns = 2;
inline constexpr Place userSource { content.x + 4, content.y + header + 3 + 21, sourcesWidth - 8, 20 };

/** A tag of the filters, or of the tag editor in their place. */
constexpr Place tag (int column, int index)
{
    return { content.x + sourcesWidth + gap + column * columnWidth + 10, content.y + header + 1 + 23 + 4 + index * 21,
             columnWidth - 20, 20 };
}

// The tag editor has the factory's tags too, whatever is shown: they are Extreme, Fast, Layered, Medium, Random,
// Resonant, Slow and so on; Drift, Mono, Opposed and Wide.
inline constexpr Place slowOfAll = tag (0, 6), wideOfAll = tag (1, 3);

inline constexpr int resultsLeft = content.x + sourcesWidth + gap + numColumns * columnWidth + gap;
inline constexpr int restOfRows = (content.height - 35 - header - scrollBar) % rowHeight;

/** A result of the first column. */
constexpr Place row (int index)
{
    return { resultsLeft, content.y + header + restOfRows / 2 + index * rowHeight, 160, rowHeight };
}

inline constexpr int buttons = content.y + content.height - 25;
inline constexpr Place editButton { content.x + 5, buttons, 95, 20 };
inline constexpr Place stopButton { content.x + 106, buttons, 60, 20 };
inline constexpr Place exportButton { content.x + 196, buttons, 84, 20 },
    importButton { content.x + 286, buttons, 84, 20 };
inline constexpr Place cancelButton { right - 64, buttons, 64, 20 }, okButton { right - 134, buttons, 64, 20 };
inline constexpr Place saveButton = okButton;
inline constexpr Place closeButton { testskin::wideWidth - 26, 5, 20, 20 };

} // namespace layout

using Keys = std::vector<const char*>;

/** The keys that press the buttons of the questions. */
namespace answers
{

// Return alone agrees to nothing that can't be taken back.
inline const Keys yes { "Left", "Return" }, no { "Return" }, ok { "Return" };
inline const Keys warningsYes { "Return" }, warningsNo { "Tab", "Return" };
inline const Keys replace { "Left", "Left", "Left", "Return" }, replaceAll { "Left", "Left", "Return" };
inline const Keys rename { "Left", "Return" }, skip { "Return" }, skipAll { "Tab", "Return" };

} // namespace answers

inline constexpr const char* initialFiles = "Ash=10 Birch=20 Cedar=30 Elm=40 Fir=50";

/** The editor with the factory's bank and five presets of the user's, and what a person does in its browser. */
class EditorBrowser : public EditorWindow
{
protected:
    void SetUp() override
    {
        for (const auto& created : { presets, desktop, bank.parent_path() })
            files::create_directories (created);

        files::copy_file (QUILVANE_FACTORY_BANK, bank);
        setenv ("HOME", desktop.parent_path().c_str(), 1);
        install ("Wide");
        load();
        write ("Ash", 10, "Modulation:Fast");
        write ("Birch", 20, "Modulation:Slow");
        write ("Cedar", 30);
        write ("Elm", 40, "Modulation:Slow;Spatialize:Wide");
        write ("Fir", 50, "Modulation:Fast");

        window.emplace (*screen, *library);
        ASSERT_TRUE (window->openAndSee());
    }

    ~EditorBrowser() override { setenv ("HOME", homeBefore.c_str(), 1); }

    //==============================================================================
    files::path file (const std::string& name) const { return presets / (name + ".qvprs2"); }

    /** A preset that has a feedback, in percent. */
    void write (const std::string& name, int percent, const std::string& tags = {}) const
    {
        std::ofstream (file (name)) << "<Preset tags=\"" << tags << "\"><Parameters><param name=\"Feedback\" value=\""
                                    << percent << "\"/></Parameters></Preset>";
    }

    /** Returns the part of a file behind a text, up to the next quotation mark. */
    static std::string find (const files::path& file, const std::string& before)
    {
        if (! files::is_regular_file (file))
            return {};

        std::ifstream stream (file);
        const std::string text (std::istreambuf_iterator<char> (stream), {});
        const auto place = text.find (before);
        const auto start = place + before.size();
        return place != std::string::npos ? text.substr (start, text.find ('"', start) - start) : std::string();
    }

    static std::string feedbackOf (const files::path& file) { return find (file, "name=\"Feedback\" value=\""); }
    std::string tagsOf (const std::string& name) const { return find (file (name), "tags=\""); }

    /** The user's presets with their feedback. */
    std::string getFiles() const
    {
        std::vector<std::string> texts;

        for (const auto& entry : files::directory_iterator (presets))
            texts.push_back (entry.path().stem().string() + "=" + feedbackOf (entry.path()));

        std::sort (texts.begin(), texts.end());
        std::string all;

        for (const auto& text : texts)
            all += (all.empty() ? "" : " ") + text;

        return all;
    }

    bool waitForFiles (const std::string& text)
    {
        const auto held = window->waitFor ([&] { return getFiles() == text; }, 5s);
        EXPECT_EQ (getFiles(), text);
        return held;
    }

    //==============================================================================
    Instance& instance() { return window->getInstance(); }

    std::vector<float> getSound()
    {
        std::vector<float> values;

        for (int i = 0; i < instance().get().numParams; ++i)
            values.push_back (instance().value (i));

        return values;
    }

    static bool isSame (const std::vector<float>& a, const std::vector<float>& b)
    {
        return std::equal (a.begin(), a.end(), b.begin(), b.end(),
                           [] (float x, float y) { return std::abs (x - y) < near; });
    }

    /** Waits for a feedback in percent, which the host has heard of, too. */
    bool waitForFeedback (const std::string& percent)
    {
        const auto wanted = std::stof (percent) / 100.0f;
        const auto held = window->waitFor ([&] { return std::abs (instance().value (feedback) - wanted) < near; }, 5s);
        EXPECT_NEAR (instance().value (feedback), wanted, near);

        const auto heard = instance().getAutomations();
        const auto last = std::find_if (heard.rbegin(), heard.rend(),
                                        [] (const auto& call)
                                        { return call.operation == rawhost::hostAutomate && call.index == feedback; });
        return held && last != heard.rend() && last->value == instance().value (feedback);
    }

    /** Whether the panel is covered, by the browser or a question. */
    bool waitForCover (bool covered = true)
    {
        return window->waitFor ([&] { return (window->getPixel (1, 1) != testskin::background) == covered; }, 5s);
    }

    void click (const Place& place)
    {
        window->click (place);
        window->settle();
    }

    void type (const Keys& keys)
    {
        window->settle();

        for (const auto* key : keys)
            window->type (key);

        window->settle();
    }

    /** Text, and Return. */
    void enter (const std::string& text)
    {
        window->settle();

        for (const auto character : text)
            window->type (character == '.'   ? "period"
                          : character == ' ' ? "space"
                          : character == '/' ? "slash"
                                             : std::string (1, character).c_str());

        type ({ "Return" });
    }

    template <typename Action>
    void holding (const char* modifier, Action&& action)
    {
        screen->pressKey (modifier);
        action();
        screen->releaseKey (modifier);
        window->settle();
    }

    void selectAll()
    {
        click (layout::row (0));
        holding ("Control_L", [&] { type ({ "a" }); });
    }

    /** Opens the browser, or its save-as by the other button. */
    void browse (const Place& button = testskin::browseButton.place)
    {
        window->click (button);
        ASSERT_TRUE (waitForCover());
        window->settle();
    }

    /** The browser with the user's presets alone. */
    void browseUser()
    {
        constexpr uint32_t ticked = 0xb84a00;

        browse();
        click (layout::userSource);
        window->moveTo (layout::content.x, layout::buttons - 5);

        const auto& button = layout::userSource;
        EXPECT_TRUE (window->waitFor (
            [&] { return window->getPixel (button.x + button.width - 8, button.centreY()) == ticked; }, 5s));
    }

    void openSaveAs() { browse (testskin::saveButton.place); }

    /** Which of the first rows are shown as selected. */
    std::string getSelectedRows()
    {
        window->moveTo (layout::content.x, layout::buttons - 5);
        window->settle();
        std::string rows;

        for (int i = 0; i < 8; ++i)
            if (const auto& place = layout::row (i); (window->getPixel (place.x + 1, place.y + 10) & 0xffu) < 0x80)
                rows += std::to_string (i);

        return rows;
    }

    const files::path presets = folder / "Quilvane 2_user" / "UserStore" / "Presets",
                      desktop = folder / "home" / "Desktop";
    const files::path bank = folder / "Quilvane 2_data" / "Presets" / "Quilvane 2 Factory.k7rpkg";
    const std::string homeBefore = getenv ("HOME");
    std::optional<HostWindow> window;
};
