// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "parameters/EventsMap.h"
#include "parameters/FloatParameter.h"
#include "parameters/ParameterManager.h"
#include "product/Quilvane.h"
#include "product/QuilvaneParameterManager.h"
#include "support/BoundedXml.h"

using namespace K7R;
using namespace quilvane;

namespace
{

void load (ParameterManager& manager, const juce::String& rows, const juce::String& root = "PluginParameters")
{
    manager.loadFromXml (juce::parseXML ("<" + root + " application='App'>" + rows + "</" + root + ">").get());
}

} // namespace

TEST (ParameterTable, BuildsEveryTypeWithItsFlags)
{
    ParameterManager manager;
    load (manager, "<PARAM index='0' name='f' min='2' max='4' value='3' auto='true' meta='true' unit='Hz' "
                   "format='decimal_nosign.1'/>"
                   "<param index='1' name='i' type='int' min='-3' max='3' value='9'/>"
                   "<param index='2' name='s' type='string' value='text'/>"
                   "<param index='3' name='b' type='bool' value='true'/>"
                   "<param index='4' name='st' type='state' value='On'/>"
                   "<param index='5' name='l' type='logic' value='1'/>"
                   "<param index='6' name='a' type='answer' value='yes'/>"
                   "<param index='7' name='e' type='enum' enum='x;y;z' value='y'/>"
                   "<param index='8' name='e2' type='enum' enum='x;y;z' value='1.0'/>"
                   "<param index='9' name='n' type='note' value='A-4'/>"
                   "<param index='10' name='n2' type='note' value='rubbish'/>");

    EXPECT_EQ (manager.getApplication(), "App");
    ASSERT_EQ (manager.getParameters().size(), 11u);

    const char* texts[] { "3.0Hz", "3", "text", "true", "On", "1", "yes", "y", "z", "A-4", "C-0" };

    for (int i = 0; i < 11; ++i)
        EXPECT_EQ (manager.getParameter (i)->getDisplayText(), texts[i]) << i;

    EXPECT_TRUE (manager.getParameter (0)->isAutomatable());
    EXPECT_TRUE (manager.getParameter (0)->isMeta());
    EXPECT_FALSE (manager.getParameter (1)->isAutomatable());
}

TEST (ParameterTable, SkipsRowsThatCannotStand)
{
    ParameterManager manager;
    load (manager, "<param index='-1' name='a'/><param name='b'/><param index='1' name=''/><param index='2'/>"
                   "<other index='3' name='c'/><param index='4' name='d' type='nothing'/>"
                   "<param index='5' name='first'/><param index='5' name='second'/><param index='6' name='first'/>"
                   "<param index='7' name='nan' value='nan' min='1' max='1'/>");

    ASSERT_EQ (manager.getParameters().size(), 2u);
    EXPECT_EQ (manager.getName (5), "first");
    EXPECT_EQ (manager.getParameterByName ("First"), nullptr);
    EXPECT_EQ (manager.getParameter (7)->getFloat(), 1.0f);
    EXPECT_EQ (manager.getParameter (7)->getNormalised(), 0.0f);
}

TEST (ParameterTable, OfAnotherKindLeavesTheManagerEmpty)
{
    ParameterManager manager;
    load (manager, "<param index='0' name='a'/>", "pluginPARAMETERS");
    EXPECT_EQ (manager.getParameters().size(), 1u);
    load (manager, "<param index='0' name='a'/>", "Other");
    EXPECT_TRUE (manager.getParameters().empty());
    load (manager, "<param index='0' name='a'/>");
    manager.loadFromXml (nullptr);
    EXPECT_TRUE (manager.getParameters().empty());

    // Look-ups of what isn't there are harmless.
    EXPECT_EQ (manager.getParameter (0), nullptr);
    EXPECT_EQ (manager.getValueString (0), juce::String());
    manager.setValueString (0, "1");
    manager.copyValue (0, 1);
    EXPECT_EQ (manager.getDefaultNormalised (0), 0.0f);
}

TEST (ParameterTable, OfTheProductHasItsCurves)
{
    QuilvaneParameterManager manager;
    manager.loadFromXml (parseBoundedXml (Quilvane::loadEmbeddedText ("parameters.xml")).get());
    ASSERT_EQ (manager.getParameters().size(), 19u);

    struct Point
    {
        int id;
        float normalised;
        float value;
        float tolerance;
    };

    for (const auto& [id, normalised, value, tolerance] :
         { Point { 1, 0.0f, 0.0125f, 1.0e-5f }, Point { 6, 1.0f, 20.0f, 1.0e-3f }, Point { 1, 0.5f, 0.49988f, 1.0e-4f },
           Point { 12, 0.0f, 50.0f, 1.0e-3f }, Point { 12, 1.0f, 12000.0f, 0.1f }, Point { 12, 0.5f, 774.6f, 0.05f },
           Point { 17, 0.5f, 0.0f, 0.0f }, Point { 17, 1.0f, 12.0f, 0.0f }, Point { 17, 0.0f, -320.0f, 0.0f },
           Point { 17, 0.25f, -12.0412f, 1.0e-4f }, Point { 15, 0.25f, 25.0f, 0.0f } })
    {
        auto& parameter = *manager.getParameter (id);
        parameter.setNormalised (normalised, true);
        EXPECT_NEAR (parameter.getFloat(), value, tolerance) << id << " at " << normalised;

        const auto before = parameter.getFloat();
        parameter.setFloat (before + 0.001f, true);
        parameter.setFloat (before, true);
        EXPECT_NEAR (parameter.getNormalised(), normalised, 2.0e-5f) << id << " at " << normalised;
    }

    // Below the curve's end, the value is kept and the normalised word stays at its end.
    manager.getParameter (12)->setFloat (5.0f, true);
    EXPECT_EQ (manager.getParameter (12)->getFloat(), 20.0f);
    EXPECT_EQ (manager.getParameter (12)->getNormalised(), 0.0f);

    const auto clone = manager.getParameter (12)->clone (99, "clone");
    clone->setNormalised (0.5f, true);
    EXPECT_NEAR (clone->getFloat(), 774.6f, 0.05f);
}

//==============================================================================
TEST (Events, KeepTheFirstOfANameOrNumber)
{
    EventsMap events;
    EXPECT_TRUE (events.addEvent ("SAVE preset As", 7));
    EXPECT_FALSE (events.addEvent ("SAVE preset As", 8));
    EXPECT_FALSE (events.addEvent ("Other", 7));
    EXPECT_EQ (events.getUid ("SAVE preset As"), 7);
    EXPECT_EQ (events.getDisplayName (7), "Save preset as");
    EXPECT_EQ (events.getName (8), juce::String());

    events.loadFromXml (*juce::parseXML ("<EventsMap><event name='a' uid='1'/><event name='b' uid='1'/>"
                                         "<event name='c'/></EventsMap>"));
    EXPECT_EQ (events.getUid ("SAVE preset As"), 0);
    EXPECT_EQ (events.getName (1), "a");
    EXPECT_EQ (events.getName (0), "c");
}

TEST (BoundedXml, RefusesWhatAParserCouldChokeOn)
{
    const auto nested = [] (int depth)
    { return juce::String::repeatedString ("<a b='/>'>", depth) + juce::String::repeatedString ("</a>", depth); };

    EXPECT_NE (parseBoundedXml (nested (maximumXmlDepth)), nullptr);
    EXPECT_EQ (parseBoundedXml (nested (maximumXmlDepth + 1)), nullptr);
    EXPECT_EQ (parseBoundedXml (juce::String::repeatedString ("<a>", 200000)), nullptr);

    for (const auto* malformed : { "",
                                   " ",
                                   "a",
                                   "<",
                                   "<a",
                                   "<a>",
                                   "<a/",
                                   "</a>",
                                   "<a></b>",
                                   "<a b></a>",
                                   "<a b=c/>",
                                   "<a b='c/>",
                                   "<a b='c'd='e'/>",
                                   "<a b='<'/>",
                                   "< a/>",
                                   "<a><b></a></b>",
                                   "<a>< /a>",
                                   "<a><!--</a>",
                                   "<a><![CDATA[</a>",
                                   "x<a/>",
                                   "<a <b/>/>",
                                   "<a b=x'y'><?c?><?d?></a>",
                                   "<!--<a/>",
                                   "<?b <a/>" })
        EXPECT_EQ (parseBoundedXml (juce::String (malformed)), nullptr) << malformed;

    // In a head, nothing behind its tag counts, and everything before it does.
    for (const auto* malformed : { "", "<a", "<a b", "<a b=", "<a b='", "<a b='&", "<a b='&#", "<a b='&#x", "<a b='&#5",
                                   "<a b='c'", "<!--<a>" })
        EXPECT_EQ (parseBoundedXmlHead (juce::String (malformed)), nullptr) << malformed;

    EXPECT_EQ (parseBoundedXmlHead ("<a b='&#x43;'><c <!DOCTYPE")->getStringAttribute ("b"), "C");

    // Markup that a scanner and a parser could read differently.
    const auto deep = [] (const juce::String& before, const juce::String& each)
    { return "<r>" + before + juce::String::repeatedString (each, 300000); };

    const auto closers = juce::String::repeatedString ("</a>", 300000);
    EXPECT_EQ (parseBoundedXml ("<a> <?b?>text</a>"), nullptr); // the parser would never return

    for (const auto* entity : { "&", "&;", "&amp", "&b;", "&#;", "&#x;", "&#x5", "&#5", "&#0;", "&#xd800;",
                                "&#x110000;", "&#99999999999;", "&#5a;", "&#-5;" })
        for (const auto* place : { "<a>%</a>", "<a b='%'/>", "<a b=\"%" })
            EXPECT_EQ (parseBoundedXml (juce::String (place).replace ("%", entity)), nullptr) << place << entity;

    EXPECT_EQ (parseBoundedXml ("<a b='&amp;&quot;&apos;&lt;&gt;&#176;&#xB0;'/>")->getStringAttribute ("b"),
               juce::CharPointer_UTF8 ("&\"'<>\xc2\xb0\xc2\xb0"));
    EXPECT_NE (parseBoundedXml ("<?xml version='1.0'?><?b?><a/>"), nullptr);
    EXPECT_EQ (parseBoundedXml (deep ("<b></b '>", "<c>")), nullptr);
    EXPECT_EQ (parseBoundedXml (deep ({}, "<c <!--/>-->>")), nullptr);
    EXPECT_EQ (parseBoundedXml (deep ("<!-->" + closers + "-->", "<c>")), nullptr);
    EXPECT_EQ (parseBoundedXml (deep ("<?>" + closers + "?>", "<c>")), nullptr);
    EXPECT_EQ (parseBoundedXml (deep ({}, "<c <?/>?>>")), nullptr);
    EXPECT_EQ (parseBoundedXml (deep (closers, "<c>")), nullptr);

    // What looks like a closing tag in a comment or in character data closes nothing.
    for (const auto* inside : { "<!--</a></a>-->", "<![CDATA[</a></a>]]>", "<?x </a></a>?>" })
        EXPECT_EQ (parseBoundedXml (juce::String::repeatedString ("<a>" + juce::String (inside), 200)), nullptr)
            << inside;

    EXPECT_EQ (parseBoundedXml ("<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>"), nullptr);
    EXPECT_EQ (parseBoundedXml ("<a>" + juce::String::repeatedString ("x", maximumXmlBytes) + "</a>"), nullptr);
    EXPECT_NE (parseBoundedXml ("<?xml version='1.0'?><!-- < > --><a><b/>text<b c='>'></b></a>"), nullptr);

    // Many elements side by side are no depth.
    EXPECT_NE (parseBoundedXml ("<a>" + juce::String::repeatedString ("<b/><c d='1'></c>", 1000) + "</a>"), nullptr);
}

TEST (BoundedXml, ReadsOurOwnDocumentsAsTheyAre)
{
    int numDocuments = 0;

    for (const auto* folder : { QUILVANE_PRESETS_FOLDER, QUILVANE_SKINS_FOLDER, QUILVANE_GALLERY_FOLDER })
        for (const auto& file : juce::File (folder).findChildFiles (juce::File::findFiles, true, "*.xml;*.qvprs2"))
        {
            const auto expected = juce::parseXML (file), xml = parseBoundedXml (file);
            ASSERT_NE (xml, nullptr) << file.getFileName();
            EXPECT_TRUE (xml->isEquivalentTo (expected.get(), false)) << file.getFileName();

            // And ten times as much, under one roof.
            juce::XmlElement many ("many");

            for (int i = 0; i < 10; ++i)
                many.addChildElement (new juce::XmlElement (*expected));

            EXPECT_NE (parseBoundedXml (many.toString()), nullptr) << file.getFileName();
            ++numDocuments;
        }

    EXPECT_GT (numDocuments, 90);

    const juce::String texts ("<a> b&lt;<!-- - -->c<d>\n</d><![CDATA[ <e> ]]><f/>&#65; </a>");
    EXPECT_TRUE (parseBoundedXml (texts)->isEquivalentTo (juce::parseXML (texts).get(), false));
    EXPECT_EQ (parseBoundedXml ("<a b='1' b='2'/>")->getStringAttribute ("b"), "1");
}

TEST (BoundedXml, RefusesWhatWouldTakeLong)
{
    const auto repeated = [] (size_t number, const char* piece)
    {
        juce::MemoryOutputStream text;

        for (size_t i = 0; i < number; ++i)
            text << juce::String (piece).replace ("#", juce::String (i));

        return text.toString();
    };

    struct Case
    {
        const char* before;
        const char* piece;
        const char* after;
        size_t most;
    };

    for (const auto& c :
         { Case { "<a>", "<b#/>", "</a>", maximumXmlNames - 1 },
           Case { "<a>", "<a b#=''/>", "</a>", maximumXmlNames - 1 },
           Case { "<a ", "b#='' ", "/>", maximumXmlAttributes }, Case { "<a>", "<a/>", "</a>", maximumXmlNodes - 1 },
           Case { "<a>", "x<![CDATA[]]>", "</a>", (maximumXmlNodes - 1) / 2 },
           Case { "<", "x", "/>", maximumXmlNameBytes } })
    {
        EXPECT_NE (parseBoundedXml (c.before + repeated (c.most, c.piece) + c.after), nullptr) << c.piece;
        EXPECT_EQ (parseBoundedXml (c.before + repeated (c.most + 1, c.piece) + c.after), nullptr) << c.piece;
    }
}
