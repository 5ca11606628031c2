// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "HostWindow.h"
#include "support/Signals.h"

using rawhost::Instance;
using rawhost::Library;
using namespace std::chrono_literals;
namespace files = std::filesystem;

enum Parameter : int
{
    lfo1Sync = 0,
    lfo1NoteRate = 2,
    stages = 14,
    feedback = 15,
    fx = 16,
};

constexpr float near = 1.0e-3f;

/** The display that all tests of the process share; main() opens it. */
extern std::unique_ptr<TestScreen> screen;

/** A copy of the plug-in with folders beside it. */
class EditorWindow : public testing::Test
{
protected:
    EditorWindow() : folder (files::temp_directory_path() / ("quilvane-window-" + std::to_string (getpid())))
    {
        files::remove_all (folder);
        files::create_directories (skins());
        files::create_directories (folder / "Quilvane 2_user");
        files::copy_file (QUILVANE_PORTABLE_PLUGIN_FILE, plugin());
    }

    ~EditorWindow() override
    {
        library.reset();
        files::remove_all (folder);
    }

    void SetUp() override
    {
        install ("Test");
        load();
    }

    void TearDown() override { EXPECT_EQ (TestScreen::getNumErrors(), 0) << "requests that the display refused"; }

    files::path plugin() const { return folder / "plugin.so"; }
    files::path skins() const { return folder / "Quilvane 2_data" / "Skins"; }

    void install (const std::string& name) const
    {
        files::copy_file (files::path (QUILVANE_TEST_SKINS) / (name + ".k7rskin"), skins() / (name + ".k7rskin"));
    }

    void uninstall (const std::string& name) const { files::remove (skins() / (name + ".k7rskin")); }

    void load()
    {
        library = std::make_unique<Library> (plugin());
        ASSERT_TRUE (library->isOpen());
    }

    /** Expects one whole gesture of a parameter, and gives its values. */
    static std::vector<float> valuesOfOneGesture (const Instance& instance, int parameter)
    {
        const auto heard = instance.getAutomations();
        EXPECT_GE (heard.size(), 2u);

        if (heard.size() < 2)
            return {};

        EXPECT_EQ (heard.front().operation, rawhost::hostBeginEdit);
        EXPECT_EQ (heard.back().operation, rawhost::hostEndEdit);

        std::vector<float> values;

        for (const auto& call : heard)
        {
            EXPECT_EQ (call.index, parameter);

            if (call.operation == rawhost::hostAutomate)
                values.push_back (call.value);
        }

        EXPECT_EQ (values.size() + 2, heard.size()) << "a gesture begins and ends once";
        return values;
    }

    static bool gestureHasEnded (const Instance& instance)
    {
        const auto heard = instance.getAutomations();
        return ! heard.empty() && heard.back().operation == rawhost::hostEndEdit;
    }

    /** Every begin has its end, and no value stands outside. */
    static void expectWholeGestures (const Instance& instance)
    {
        int open = 0;

        for (const auto& call : instance.getAutomations())
        {
            open += call.operation == rawhost::hostBeginEdit ? 1 : call.operation == rawhost::hostEndEdit ? -1 : 0;
            EXPECT_TRUE (open == 0 || open == 1);
        }

        EXPECT_EQ (open, 0);
    }

    /** A whole drag of the feedback knob from 0, which takes 250 pixels for the whole range. */
    static void expectWholeDrag (HostWindow& window)
    {
        auto& instance = window.getInstance();
        instance.set (feedback, 0.0f);
        ASSERT_TRUE (window.waitToShow (testskin::feedbackKnob, 0));
        instance.clearAutomations();

        window.startDrag (testskin::feedbackKnob.place, 100);
        EXPECT_TRUE (window.waitFor ([&] { return std::abs (instance.value (feedback) - 0.4f) < near; }))
            << instance.value (feedback);
        EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, 4));
        window.release();
        ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));

        const auto values = valuesOfOneGesture (instance, feedback);
        ASSERT_GE (values.size(), 3u);
        EXPECT_TRUE (std::is_sorted (values.begin(), values.end()));
        EXPECT_EQ (values.back(), instance.value (feedback));
    }

    static void processSome (Instance& instance, float amplitude, int numSamples = 4096)
    {
        auto left = signals::noise (static_cast<size_t> (numSamples), 1, amplitude);
        auto right = left;
        instance.process (left, right);
    }

    /** The instance's state with another skin in it; the names are of one length. */
    static std::vector<char> chunkWithSkin (Instance& instance, const std::string& present, const std::string& other)
    {
        auto chunk = instance.getChunk();
        const auto place = std::search (chunk.begin(), chunk.end(), present.begin(), present.end());
        EXPECT_NE (place, chunk.end());
        EXPECT_EQ (present.size(), other.size());

        if (place != chunk.end())
            std::copy (other.begin(), other.end(), place);

        return chunk;
    }

    static size_t countOpenFiles()
    {
        const files::directory_iterator list ("/proc/self/fd");
        return static_cast<size_t> (std::distance (begin (list), end (list)));
    }

    static size_t getResidentBytes()
    {
        size_t total = 0, resident = 0;
        std::ifstream ("/proc/self/statm") >> total >> resident;
        return resident * static_cast<size_t> (sysconf (_SC_PAGESIZE));
    }

    const files::path folder;
    std::unique_ptr<Library> library;
};
