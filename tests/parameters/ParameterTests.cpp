// SPDX-License-Identifier: GPL-3.0-or-later

#include <limits>
#include <thread>

#include <gtest/gtest.h>

#include "parameters/BoolParameter.h"
#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"
#include "parameters/ParameterManager.h"
#include "parameters/StringParameter.h"
#include "support/MessageLoop.h"

using namespace K7R;

namespace
{

constexpr auto notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();

struct CountingListener : Parameter::Listener
{
    void parameterChanged (Parameter& parameter) override
    {
        ++changes;
        lastValue = parameter.getFloat();
    }

    void parameterGestureBegan (Parameter&) override { ++begins; }
    void parameterGestureEnded (Parameter&) override { ++ends; }

    int changes = 0;
    int begins = 0;
    int ends = 0;
    float lastValue = 0.0f;
};

EnumParameter makeEnum()
{
    return { 1, "Enum" };
}

} // namespace

//==============================================================================
TEST (Notification, HappensOnceForEachValueThatDiffers)
{
    FloatParameter parameter (1, "P", 0.0f, 10.0f, 5.0f);
    CountingListener listener;
    parameter.addListener (&listener);
    parameter.addListener (&listener);

    parameter.setFloat (7.0f, true);
    parameter.setFloat (7.0f, true);
    EXPECT_EQ (listener.changes, 1);
    EXPECT_EQ (listener.lastValue, 7.0f);

    // A silent change is visible, and makes a later equal one silent too.
    parameter.setFloat (3.0f, false);
    EXPECT_EQ (parameter.getFloat(), 3.0f);
    parameter.setFloat (3.0f, true);
    EXPECT_EQ (listener.changes, 1);

    parameter.removeListener (&listener);
    parameter.setFloat (8.0f, true);
    EXPECT_EQ (listener.changes, 1);
}

TEST (Notification, ReachesAsynchronousListenersOnceForManyChanges)
{
    FloatParameter parameter (1, "P", 0.0f, 10.0f, 5.0f);
    CountingListener listener;
    parameter.addAsyncListener (&listener);

    for (int i = 0; i < 10; ++i)
        parameter.setInt (i, true);

    EXPECT_EQ (listener.changes, 0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return listener.changes > 0; }));
    runMessageLoopFor (60);
    EXPECT_EQ (listener.changes, 1);
    EXPECT_EQ (listener.lastValue, 9.0f);
}

TEST (Notification, OfAnotherThreadReachesAsynchronousListenersThroughTheRelay)
{
    ParameterManager manager;
    manager.addParameter (std::make_unique<FloatParameter> (1, "P", 0.0f, 10.0f, 5.0f));
    manager.startUpdates();

    CountingListener synchronous, asynchronous;
    auto& parameter = *manager.getParameter (1);
    parameter.addListener (&synchronous);
    parameter.addAsyncListener (&asynchronous);

    std::thread other (
        [&]
        {
            for (int i = 0; i <= 4; ++i)
                parameter.setInt (i, true);
        });
    other.join();

    EXPECT_EQ (synchronous.changes, 5);
    EXPECT_EQ (asynchronous.changes, 0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return asynchronous.changes > 0; }));
    runMessageLoopFor (60);
    EXPECT_EQ (asynchronous.changes, 1);
    EXPECT_EQ (asynchronous.lastValue, 4.0f);
}

TEST (Notification, WalksFromLastToFirstAndToleratesRemoval)
{
    struct Removing : Parameter::Listener
    {
        explicit Removing (std::string& l, char n) : log (l), name (n) {}

        void parameterChanged (Parameter& parameter) override
        {
            log += name;

            for (auto* victim : victims)
                parameter.removeListener (victim);
        }

        std::string& log;
        char name;
        std::vector<Parameter::Listener*> victims;
    };

    const auto walk = [] (auto&& arrange)
    {
        FloatParameter parameter (1, "P", 0.0f, 1.0f, 0.0f);
        std::string log;
        Removing a (log, 'a'), b (log, 'b'), c (log, 'c'), d (log, 'd');

        for (auto* listener : { &a, &b, &c, &d })
            parameter.addListener (listener);

        arrange (a, b, c, d);
        parameter.setFloat (1.0f, true);
        return log;
    };

    EXPECT_EQ (walk ([] (auto&, auto&, auto&, auto&) {}), "dcba");
    EXPECT_EQ (walk ([] (auto&, auto&, auto& c, auto&) { c.victims = { &c }; }), "dcba");
    EXPECT_EQ (walk (
                   [] (auto& a, auto& b, auto& c, auto& d)
                   {
                       d.victims = { &c, &d, &b };
                       (void) a;
                   }),
               "da");
    EXPECT_EQ (walk ([] (auto& a, auto& b, auto& c, auto& d) { c.victims = { &a, &b, &c, &d }; }), "dc");
}

TEST (Gestures, AreReportedByTheirFirstBeginAndFirstEnd)
{
    FloatParameter parameter (1, "P", 0.0f, 1.0f, 0.0f);
    CountingListener listener, asynchronous;
    parameter.addListener (&listener);
    parameter.addAsyncListener (&asynchronous);

    parameter.endGesture();
    EXPECT_EQ (listener.ends, 0);
    parameter.beginGesture();
    parameter.beginGesture();
    parameter.endGesture();
    parameter.endGesture();
    EXPECT_EQ (listener.begins, 1);
    EXPECT_EQ (listener.ends, 1);

    runMessageLoopFor (20);
    EXPECT_EQ (asynchronous.begins + asynchronous.ends, 0);
}

//==============================================================================
TEST (FloatParameter, ClampsEverySetterAndIgnoresNaN)
{
    FloatParameter parameter (1, "P", 20.0f, -10.0f, 50.0f);
    EXPECT_EQ (parameter.getMinimum(), -10.0f);
    EXPECT_EQ (parameter.getFloat(), 20.0f);
    EXPECT_EQ (parameter.getNormalised(), 1.0f);

    parameter.setNormalised (0.5f, true);
    EXPECT_EQ (parameter.getFloat(), 5.0f);
    EXPECT_TRUE (parameter.getBool());
    parameter.setFloat (-3.7f, true);
    EXPECT_EQ (parameter.getInt(), -3);
    EXPECT_FALSE (parameter.getBool());

    parameter.setFloat (-infinity, true);
    EXPECT_EQ (parameter.getFloat(), -10.0f);
    parameter.setNormalised (infinity, true);
    EXPECT_EQ (parameter.getFloat(), 20.0f);

    CountingListener listener;
    parameter.addListener (&listener);
    parameter.setFloat (notANumber, true);
    parameter.setNormalised (notANumber, true);
    parameter.setString ("nan", true);
    EXPECT_EQ (parameter.getFloat(), 20.0f);
    EXPECT_EQ (listener.changes, 0);
}

TEST (FloatParameter, StoresASwitchedValueWithItsNormalisedWordReversed)
{
    FloatParameter parameter (1, "P", 0.0f, 10.0f, 5.0f);
    parameter.setBool (true, true);
    EXPECT_EQ (parameter.getFloat(), 10.0f);
    EXPECT_EQ (parameter.getNormalised(), 0.0f);
    parameter.setBool (false, true);
    EXPECT_EQ (parameter.getFloat(), 0.0f);
    EXPECT_EQ (parameter.getNormalised(), 1.0f);
}

TEST (IntParameter, RoundsNormalisedValuesAndTruncatesPlainOnes)
{
    IntParameter parameter (1, "P", -5, 5, 0);
    parameter.setNormalised (0.95f, true);
    EXPECT_EQ (parameter.getInt(), 5);
    parameter.setNormalised (0.94f, true);
    EXPECT_EQ (parameter.getInt(), 4);
    EXPECT_FLOAT_EQ (parameter.getNormalised(), 0.9f);
    parameter.setFloat (-2.9f, true);
    EXPECT_EQ (parameter.getInt(), -2);
    parameter.setFloat (3.0e20f, true);
    EXPECT_EQ (parameter.getInt(), 5);
    parameter.setFloat (notANumber, true);
    parameter.setNormalised (notANumber, true);
    EXPECT_EQ (parameter.getInt(), 5);
    parameter.setBool (false, true);
    EXPECT_EQ (parameter.getInt(), -5);
    EXPECT_FALSE (parameter.getBool());
    parameter.setString ("3", true);
    EXPECT_EQ (parameter.getString(), "3");
}

TEST (EnumParameter, TakesNamesExactlyAndOtherTextsAsNormalisedNumbers)
{
    EnumParameter parameter (1, "E");
    EXPECT_EQ (parameter.getString(), juce::String());
    EXPECT_EQ (parameter.getNormalised(), 0.0f);

    parameter.setEnumNames ("32;16;8;4;2;1;1/2;1/4;1/8;1/16;1/32");
    EXPECT_EQ (parameter.getMaximum(), 10);

    parameter.setString ("1/4", true);
    EXPECT_EQ (parameter.getInt(), 7);
    parameter.setString ("0.5", true);
    EXPECT_EQ (parameter.getString(), "1");
    parameter.setNormalised (1.0f, true);
    EXPECT_EQ (parameter.getInt(), 10);
    parameter.setNormalised (0.95f, true);
    EXPECT_EQ (parameter.getInt(), 10);

    // Names that differ in case are no names.
    parameter.setEnumNames ("Low;Mid;High");
    EXPECT_EQ (parameter.getInt(), 2);
    parameter.setString ("mid", true);
    EXPECT_EQ (parameter.getInt(), 0);
}

TEST (NoteParameter, ReadsAndWritesThreeCharacterNames)
{
    NoteParameter parameter (1, "N", 60);
    EXPECT_EQ (parameter.getString(), "C-5");

    for (const auto& [text, note] : { std::pair { "C-0", 0 }, std::pair { "G-9", 115 }, std::pair { "B-H", 127 },
                                      std::pair { "E#3", 40 }, std::pair { "A#1", 22 }, std::pair { "F#H", 126 } })
    {
        parameter.setString (text, true);
        EXPECT_EQ (parameter.getInt(), note) << text;
    }

    EXPECT_EQ (parameter.getString(), "F#H");

    for (const auto* text : { "C0", "c-4", "H-4", "C+4", "C-X", "" })
        EXPECT_EQ (NoteParameter::parseNoteName (text), -1) << text;

    parameter.setString ("0.5", true);
    EXPECT_EQ (parameter.getInt(), 64);

    for (int note = 0; note <= 127; ++note)
    {
        parameter.setInt (note, true);
        EXPECT_EQ (NoteParameter::parseNoteName (parameter.getString()), note);
    }
}

TEST (BoolParameters, ReadTheirOwnWordsAndTheCommonOnes)
{
    BoolParameter plain (1, "B");
    StateParameter state (2, "S");
    LogicParameter logic (3, "L");
    AnswerParameter answer (4, "A");

    struct Case
    {
        Parameter& parameter;
        const char* on;
        const char* off;
    };

    for (auto& [parameter, on, off] : { Case { plain, "true", "false" }, Case { state, "On", "Off" },
                                        Case { logic, "1", "0" }, Case { answer, "yes", "no" } })
    {
        SCOPED_TRACE (on);
        EXPECT_EQ (parameter.getString(), off);

        for (const auto* text : { on, "true", "1", "on", "yes", "0.5" })
        {
            parameter.setBool (false, true);
            parameter.setString (text, true);
            EXPECT_TRUE (parameter.getBool()) << text;
        }

        EXPECT_EQ (parameter.getString(), on);

        for (const auto* text : { off, "false", "0", "off", "no", "0.49", "nonsense" })
        {
            parameter.setBool (true, true);
            parameter.setString (text, true);
            EXPECT_FALSE (parameter.getBool()) << text;
        }

        parameter.setFloat (0.01f, true);
        EXPECT_EQ (parameter.getInt(), 1);
        parameter.setNormalised (0.49f, true);
        EXPECT_EQ (parameter.getNormalised(), 0.0f);
        parameter.setNormalised (notANumber, true);
        parameter.setFloat (notANumber, true);
        EXPECT_FALSE (parameter.getBool());
    }

    // Only a state ignores case, and only in its own words.
    state.setString ("ON", true);
    EXPECT_TRUE (state.getBool());
    plain.setString ("ON", true);
    EXPECT_FALSE (plain.getBool());
}

TEST (StringParameter, KeepsTextAndReadsItAsNumbers)
{
    StringParameter parameter (1, "S", "Init");
    CountingListener listener;
    parameter.addListener (&listener);

    parameter.setString ("Init", true);
    EXPECT_EQ (listener.changes, 0);
    parameter.setString ("7.5", true);
    EXPECT_EQ (listener.changes, 1);
    EXPECT_EQ (parameter.getFloat(), 7.5f);
    EXPECT_EQ (parameter.getNormalised(), 1.0f);
    EXPECT_EQ (parameter.getInt(), 7);
    EXPECT_FALSE (parameter.getBool());
    parameter.setInt (0, true);
    EXPECT_TRUE (parameter.getBool());
    parameter.setBool (true, true);
    EXPECT_EQ (parameter.getString(), "true");
}

TEST (Clones, KeepEverythingButListeners)
{
    auto original = makeEnum();
    original.setEnumNames ("Normal;High");
    original.setInt (1, false);
    original.setAutomatable (true);
    original.setUnit ("x");
    CountingListener listener;
    original.addListener (&listener);

    const auto clone = original.clone (7, "Copy");
    EXPECT_EQ (clone->getId(), 7);
    EXPECT_EQ (clone->getName(), "Copy");
    EXPECT_EQ (clone->getDisplayText(), "Highx");
    EXPECT_TRUE (clone->isAutomatable());
    clone->setInt (0, true);
    EXPECT_EQ (listener.changes, 0);
    EXPECT_EQ (original.getInt(), 1);

    clone->copyFrom (original, true);
    EXPECT_EQ (clone->getString(), "High");
}

//==============================================================================
TEST (DisplayText, FollowsTheFormat)
{
    struct Case
    {
        const char* keyword;
        float value;
        const char* text;
    };

    // In the range -20000 to 20000, with the unit "u".
    const Case cases[] {
        { "integer", 59.9f, "59u" },
        { "integer", -59.9f, "-59u" },
        { "decimal_nosign.1", 0.26f, "0.3u" },
        { "decimal_nosign.2", -1.5f, "-1.50u" },
        { "decimal", 0.0f, "0u" },
        { "decimal", -2.5f, "-2u" },
        { "decimal", 2.5f, "+2u" },
        { "decimal.1", 0.0f, "0u" },
        { "decimal.1", 3.0f, "+3.0u" },
        { "decimal.1", -3.26f, "-3.3u" },
        { "decimal.2", 3.0f, "+3.00u" },
        { "decimal.3", -0.5f, "-0.500u" },
        { "decimalKilo.2", 12000.0f, "12u" },
        { "decimal.1-inf", 1.0f, "+1.0u" },
        { "decimal.1-inf", -20000.0f, "-inf." },
        { "decimalKilo.1", 1270.0f, "1.3u" },
        { "decimalKilo.2", 1250.0f, "1.25u" },
        { "decimalOrKilo", 999.9f, "999u" },
        { "decimalOrKilo", 1500.0f, "1.5ku" },
        { "decimalOrKilo.1", 999.9f, "999u" },
        { "decimalOrKilo.1", 1270.0f, "1.3ku" },
        { "decimalOrKilo.2", 320.0f, "320u" },
        { "decimalOrKilo.2", 1250.0f, "1.25ku" },
        { "decimalOrKilo.2", 999.9f, "999u" },
        { "crossfade", 20000.0f, "0/100u" },
        { "crossfade", -12000.0f, "80/20u" },
    };

    for (const auto& [keyword, value, text] : cases)
    {
        FloatParameter parameter (1, "P", -20000.0f, 20000.0f, value);
        parameter.setUnit ("u");
        parameter.setFormat (valueFormatFromKeyword (keyword));
        EXPECT_EQ (parameter.getDisplayText(), text) << keyword << " of " << value;
    }

    EXPECT_EQ (valueFormatFromKeyword ("Integer"), ValueFormat::none);
}

TEST (DisplayText, WithoutAFormatIsTheMachineTextOrThatOfAFormatter)
{
    struct Formatter : ParameterTextFormatter
    {
        juce::String getText (const Parameter& p) const override { return "<" + p.getString() + ">"; }
    };

    IntParameter parameter (1, "P", 0, 10, 3);
    parameter.setUnit ("s");
    EXPECT_EQ (parameter.getDisplayText(), "3s");

    const Formatter formatter;
    parameter.setTextFormatter (&formatter);
    EXPECT_EQ (parameter.getDisplayText(), "<3>");
}

//==============================================================================
TEST (TypedTexts, NameTheValueThatTheirParameterShows)
{
    const struct
    {
        const char* keyword;
        const char* unit;
        float tolerance; // by what the text leaves out
    } formats[] {
        { "", "Hz", 0.001f },
        { "integer", "%", 1.0f },
        { "decimal_nosign.1", "", 0.06f },
        { "decimal_nosign.2", " ms", 0.006f },
        { "decimal", "dB", 1.0f },
        { "decimal.1", "dB", 0.06f },
        { "decimal.2", "dB", 0.006f },
        { "decimal.3", "dB", 0.002f },
        { "decimal.1-inf", "dB", 0.06f },
        { "decimalKilo.1", "kHz", 60.0f },
        { "decimalKilo.2", "kHz", 15.0f },
        { "decimalOrKilo", "Hz", 1.0f },
        { "decimalOrKilo.1", "Hz", 60.0f },
        { "decimalOrKilo.2", "Hz", 15.0f },
        { "crossfade", "% (Dry/Wet)", 31.0f },
    };

    for (const auto& [keyword, unit, tolerance] : formats)
    {
        FloatParameter parameter (1, "P", -50.0f, 3000.0f, 0.0f);
        parameter.setFormat (valueFormatFromKeyword (keyword));
        parameter.setUnit (juce::String::fromUTF8 (unit));

        for (int step = 0; step <= 1000; ++step)
        {
            parameter.setNormalised (static_cast<float> (step) * 0.001f, false);
            const auto shown = parameter.getDisplayText();
            const auto read = parameter.clone (2, "Q");
            read->setNormalised (step < 500 ? 1.0f : 0.0f, false);

            ASSERT_TRUE (read->setDisplayText (shown, false)) << keyword << " " << shown;
            ASSERT_NEAR (read->getFloat(), parameter.getFloat(), tolerance) << keyword << " " << shown;

            // And for good: what it shows then is the same value.
            const auto again = read->getFloat();
            ASSERT_TRUE (read->setDisplayText (read->getDisplayText(), false));
            ASSERT_EQ (read->getFloat(), again) << keyword << " " << shown;
        }
    }
}

TEST (TypedTexts, AreTakenAsPeopleWriteThemAndRefusedAsNoValue)
{
    const struct
    {
        const char* keyword;
        const char* unit;
        const char* typed;
        float expected; // NaN for a refusal
    } cases[] {
        { "integer", "%", "38", 38.0f },
        { "integer", "%", " 38 % ", 38.0f },
        { "integer", "%", "+38%", 38.0f },
        { "integer", "%", "12.5", 12.5f },
        { "integer", "%", "-5", 0.0f },
        { "integer", "%", "1e9", 2000.0f },
        { "integer", "%", "loud", notANumber },
        { "integer", "%", "", notANumber },
        { "integer", "%", "%", notANumber },
        { "integer", "%", "38dB", notANumber },
        { "integer", "%", "3 8", notANumber },
        { "integer", "%", "nan", notANumber },
        { "decimalOrKilo.2", "Hz", "1.2k", 1200.0f },
        { "decimalOrKilo.2", "Hz", "1.2 khz", 1200.0f },
        { "decimalOrKilo.2", "Hz", "1250H", 1250.0f },
        { "decimalOrKilo.2", "Hz", ".5kHz", 500.0f },
        { "decimalOrKilo.2", "Hz", "1kk", notANumber },
        { "decimalKilo.1", "kHz", "1.2", 1200.0f },
        { "decimal.1-inf", "dB", "-INF", 0.0f },
        { "decimal.1-inf", "dB", "-inf.dB", 0.0f },
        { "decimal.1-inf", "dB", "inf", notANumber },
        { "decimal.1", "dB", "-inf.", notANumber },
        { "crossfade", "% (Dry/Wet)", "60/40", 800.0f },
        { "crossfade", "% (Dry/Wet)", "60 / 40 % (dry", 800.0f },
        { "crossfade", "% (Dry/Wet)", "40", 800.0f },
        { "crossfade", "% (Dry/Wet)", "60/50", notANumber },
        { "crossfade", "% (Dry/Wet)", "60/", notANumber },
        { "", "Hz", "0.5 Hz", 0.5f },
    };

    for (const auto& [keyword, unit, typed, expected] : cases)
    {
        FloatParameter parameter (1, "P", 0.0f, 2000.0f, 7.0f);
        parameter.setFormat (valueFormatFromKeyword (keyword));
        parameter.setUnit (unit);
        EXPECT_EQ (parameter.setDisplayText (typed, false), ! std::isnan (expected)) << keyword << " " << typed;
        EXPECT_NEAR (parameter.getFloat(), std::isnan (expected) ? 7.0f : expected, 1.0e-3f) << keyword << " " << typed;
    }

    auto list = makeEnum();
    list.setEnumNames ("2;4;6;8;Hyper Triangle");
    NoteParameter note (1, "Note", 5);
    StateParameter state (1, "State");
    IntParameter whole (1, "Whole", -3, 9, 5);
    whole.setUnit (" st");

    const struct
    {
        Parameter& parameter;
        const char* typed;
        int expected; // -100 for a refusal
    } words[] { { list, "8", 3 },        { list, "3", -100 },   { list, " hyper triangle", 4 },
                { list, "Hyper", -100 }, { state, "ON", 1 },    { state, "no", 0 },
                { state, "2", -100 },    { note, "c#4", 49 },   { note, "C-H", 120 },
                { note, "a4", 57 },      { note, "60", 60 },    { note, "H4", -100 },
                { note, "500", 127 },    { whole, "+4 st", 4 }, { whole, "-9", -3 },
                { whole, "2.5", -100 } };

    for (const auto& [parameter, typed, expected] : words)
    {
        const auto before = parameter.getInt();
        EXPECT_EQ (parameter.setDisplayText (typed, false), expected != -100) << typed;
        EXPECT_EQ (parameter.getInt(), expected == -100 ? before : expected) << typed;
    }

    StringParameter text (1, "Text", "Old");
    EXPECT_TRUE (text.setDisplayText ("Any words", false));
    EXPECT_EQ (text.getString(), "Any words");
}
