// SPDX-License-Identifier: GPL-3.0-or-later

// The host's indexes and the parameters' defaults, as a person changes them in the editor.

#include <cstdlib>

#include "EditorWindow.h"

using testskin::Place;

namespace
{

constexpr int headingHeight = 26, sectionSpacing = 6, margin = 14, rowSpacing = 8;
constexpr Place options { (testskin::width - 560) / 2, testskin::height / 10, 560, testskin::height * 8 / 10 };
constexpr int left = options.x + 9, top = options.y + 37;

/** A heading, with all sections before it folded. */
constexpr Place heading (int section)
{
    return { left, top + section * (headingHeight + sectionSpacing), 300, headingHeight };
}

constexpr int mapSection = 3;
constexpr int settingsLeft = left + margin + 130, settingsTop = heading (mapSection).y + headingHeight + margin;
constexpr Place browseButton { settingsLeft + 360 - 32, settingsTop, 32, 22 };
constexpr int buttonsTop = settingsTop + 22 + rowSpacing + 20 + rowSpacing;
constexpr Place forgetButton { settingsLeft, buttonsTop, 86, 22 };
constexpr Place saveButton { settingsLeft + 86 + 8, buttonsTop, 86, 22 };

class EditorHostMap : public EditorWindow
{
protected:
    EditorHostMap()
    {
        files::create_directories (home);
        setenv ("HOME", home.c_str(), 1);
    }

    ~EditorHostMap() override { setenv ("HOME", homeBefore.c_str(), 1); }

    static void openSection (HostWindow& window)
    {
        ASSERT_TRUE (window.openAndSee());
        window.click (testskin::optionsButton.place);
        ASSERT_TRUE (window.waitFor ([&] { return window.getPixel (1, 1) != testskin::background; }));
        window.settle();

        for (int section = 0; section < mapSection; ++section)
        {
            window.click (heading (section));
            window.settle();
        }
    }

    static void choose (HostWindow& window, const Place& button, const std::string& name)
    {
        window.click (button);
        window.settle();

        for (const auto character : name)
            window.type (character == '.' ? "period" : std::string (1, character).c_str());

        window.type ("Return");
        window.settle();
    }

    static std::string nameAt (HostWindow& window, int index)
    {
        return window.getInstance().text (rawhost::effGetParamName, index);
    }

    /** The map in the settings: whether it's loaded, and the name of its file. */
    std::string setting() const
    {
        const auto text = textOf (folder / "Quilvane 2_user" / "Quilvane 2.ini");
        const auto element = between (text, "<HostParametersMap ", "/>");
        const auto path = between (element, "file=\"", "\"");
        return between (element, "default=\"", "\"") + " " + path.substr (path.find_last_of ('/') + 1);
    }

    /** The first part of a text that stands between these two; empty if there is none. */
    static std::string between (const std::string& text, const std::string& before, const std::string& behind)
    {
        const auto start = text.find (before);

        if (start == std::string::npos)
            return {};

        const auto rest = text.substr (start + before.size());
        return rest.substr (0, rest.find (behind));
    }

    static std::string textOf (const files::path& file)
    {
        std::ifstream stream (file);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    const files::path home = folder / "home";
    const std::string homeBefore = getenv ("HOME");
};

} // namespace

TEST_F (EditorHostMap, IsSavedChosenAndForgotten)
{
    const auto file = home / "mine.qvhpmap";

    {
        HostWindow window (*screen, *library);
        openSection (window);
        choose (window, saveButton, "mine");

        auto text = textOf (file);
        EXPECT_NE (text.find ("<HostParametersMap name=\"Quilvane 2\">"), std::string::npos) << text;

        for (int index = 0; index < 18; ++index)
            EXPECT_NE (text.find ("<assign hostParam=\"" + std::to_string (index + 1) + "\" pluginParam=\""
                                  + nameAt (window, index) + "\"/>"),
                       std::string::npos)
                << index;

        // The user writes another order.
        const auto replace = [&] (const std::string& from, const std::string& to)
        { text.replace (text.find (from), from.size(), to); };

        replace ("\"FX\"", "\"?\"");
        replace ("\"LFO 1 Sync\"", "\"FX\"");
        std::ofstream (file) << text;
        std::ofstream (home / "foreign.qvhpmap") << "<HostParametersMap name=\"Another\"/>";

        choose (window, browseButton, "mine.qvhpmap");
        ASSERT_TRUE (window.waitFor ([&] { return nameAt (window, 0) == "FX"; }));
        EXPECT_EQ (nameAt (window, 1), "LFO 1 Rate");
        EXPECT_EQ (nameAt (window, fx), "Parameter 17");

        // The host reaches the parameter at its new place.
        window.getInstance().set (0, 0.4f);
        EXPECT_TRUE (window.getInstance().text (rawhost::effGetParamDisplay, 0).rfind ("60/40%", 0) == 0);

        choose (window, browseButton, "foreign.qvhpmap");
        EXPECT_EQ (nameAt (window, 0), "FX");
    }

    EXPECT_EQ (setting(), "yes mine.qvhpmap");

    {
        HostWindow window (*screen, *library);
        EXPECT_EQ (nameAt (window, 0), "FX");
        openSection (window);
        window.click (forgetButton);
        EXPECT_TRUE (window.waitFor ([&] { return nameAt (window, 0) == "LFO 1 Sync"; }));
        EXPECT_EQ (nameAt (window, fx), "FX");
    }

    EXPECT_EQ (setting(), "no ");
    EXPECT_TRUE (files::exists (file));
    HostWindow window (*screen, *library);
    EXPECT_EQ (nameAt (window, 0), "LFO 1 Sync");
}

TEST_F (EditorHostMap, ADoubleClickBringsBackWhatTheDefaultPresetShows)
{
    constexpr int centerFrequency = 12;
    const auto presets = folder / "Quilvane 2_data" / "Presets";
    files::create_directories (presets);
    files::copy_file (QUILVANE_FACTORY_BANK, presets / "Quilvane 2 Factory.k7rpkg");

    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());
    const auto shown = [&] { return instance.text (rawhost::effGetParamDisplay, centerFrequency); };
    const auto original = shown();
    ASSERT_EQ (original, "240Hz");

    instance.set (centerFrequency, 0.9f);
    ASSERT_NE (shown(), original);
    window.doubleClick (testskin::centerKnob.place);
    EXPECT_TRUE (window.waitFor ([&] { return shown() == original; }, std::chrono::seconds (3))) << shown();
}
