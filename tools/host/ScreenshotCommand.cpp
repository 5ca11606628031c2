// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>

#include "Commands.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "Options.h"
#include "OutputFile.h"
#include "ParameterText.h"
#include "PluginFolders.h"
#include "PresetBank.h"
#include "ShownPlugin.h"
#include "browser/PackageExport.h"
#include "content/Preset.h"
#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "editor/BasePluginEditor.h"

namespace K7R::host
{

namespace
{

constexpr double secondsBefore = 1.5; // of sound, so that lights and meters show something

/** The control of the panel that moves a parameter; of several the first. */
juce::Component* findControl (juce::Component& parent, const Parameter& parameter)
{
    for (int i = 0; auto* child = parent.getChildComponent (i); ++i)
    {
        if (auto* target = dynamic_cast<SkinControl*> (child); target != nullptr && child->isVisible())
            for (const auto& part : target->getParts())
                if (part.parameter == &parameter)
                    return part.component;

        if (auto* found = findControl (*child, parameter))
            return found;
    }

    return nullptr;
}

void showInfo (ShownPlugin& shown, const juce::String& name)
{
    auto* parameter = shown.getPlugin().getParameters().getParameterByName (name);
    auto* panel = shown.getEditor().getSkinPanel();
    auto* control = parameter != nullptr && panel != nullptr ? findControl (*panel, *parameter) : nullptr;

    if (parameter == nullptr || control == nullptr)
        throw Failure ("no control of this skin moves a parameter \"" + name + "\"");

    shown.getEditor().getWindows().showParameterInfo (*parameter, *control, false);
}

/** Some presets of a user's, so that there is something to see. */
void addUserPresets (ShownPlugin& shown)
{
    auto& user = *shown.getPlugin().getUserPresets();
    const auto tagsOf = [] (const char* text) { return TagSet::fromText (text); };

    user.createItemFile ("Chorus of two", tagsOf ("Modulation:Slow|Subtle;Spatialize:Wide"));
    user.createItemFile ("Rhodes, late", tagsOf ("Modulation:Slow;Spatialize:Wide"));
    user.createItemFile ("Vocal shimmer", tagsOf ("Modulation:Fast|Subtle"));
}

void showEditMode (BasePluginEditor& editor)
{
    auto& browser = *editor.getBrowser();
    editor.presetEvent (eventIds::browsePresets);
    browser.setEditMode (true);
    browser.getResults().flush();

    std::vector<BrowserContent::Key> keys;

    for (const auto& result : browser.getResults().getList().getResults())
        if (keys.size() < 2)
            keys.push_back (BrowserContent::keyOf (result.item));

    browser.getResults().selectKeys (keys);
}

/** An import that meets a name that is taken. */
void showImport (ShownPlugin& shown)
{
    auto& editor = shown.getEditor();
    const juce::TemporaryFile archive (".qvzip");
    showEditMode (editor);

    PackageExport package (archive.getFile());

    for (const auto& item : shown.getPlugin().getUserPresets()->getItems())
        package.add (*item);

    if (! package.write())
        throw Failure ("can't write " + archive.getFile().getFullPathName());

    editor.getBrowser()->importFile (archive.getFile());
}

void showWindow (ShownPlugin& shown, const juce::String& what)
{
    auto& editor = shown.getEditor();
    auto& windows = editor.getWindows();
    const juce::String infoPrefix = "info:";

    const std::map<juce::String, std::function<void()>> commands {
        { "options", [&] { windows.showOptions(); } },
        { "about", [&] { windows.showAbout(); } },
        { "alert", [&] { windows.showPresetChangedAlert ({}); } },
        { "learn", [&] { windows.toggleMidiLearn(); } },
        { "browser", [&] { editor.presetEvent (eventIds::browsePresets); } },
        { "browser-edit", [&] { showEditMode (editor); } },
        { "browser-saveas", [&] { editor.presetEvent (eventIds::savePreset); } },
        { "import", [&] { showImport (shown); } },
        { "quality", [&] { editor.getStatusBar().togglePopup (StatusBar::Popup::quality); } },
        { "midi", [&] { editor.getStatusBar().togglePopup (StatusBar::Popup::midi); } },
        { "gui", [&] { editor.getStatusBar().togglePopup (StatusBar::Popup::gui); } },
    };

    if (const auto command = commands.find (what); command != commands.end())
        command->second();
    else if (what.startsWith (infoPrefix))
        showInfo (shown, what.substring (infoPrefix.length()).unquoted());
    else
        throw Failure ("there is no window \"" + what + "\"");
}

void runScreenshot (const juce::ArgumentList& arguments)
{
    const Options options (arguments, { { "--data", Options::Kind::single },
                                        { "--plugin", Options::Kind::single },
                                        { "--preset", Options::Kind::single },
                                        { "--set", Options::Kind::many },
                                        { "--show", Options::Kind::single },
                                        { "--silent", Options::Kind::toggle },
                                        { "--skin", Options::Kind::single } });
    const auto output = resolveFile (options.requirePositional (1, 1, "one file, OUT.png")[0]);
    OutputFile::check (output);

    // No display is looked for, and none that goes away can end the work.
    setenv ("DISPLAY", ":65535", 1); // NOLINT(concurrency-mt-unsafe): no other thread reads it yet

    const auto data = options.getValue ("--data");
    const auto dataFolder =
        data.has_value() ? resolveFile (*data) : PluginFolders::getData (HostedPlugin::findFile (options));

    ShownPlugin shown (dataFolder, options.getValue ("--skin").value_or (""));
    shown.open();
    auto& plugin = shown.getPlugin();

    if (const auto name = options.getValue ("--preset"))
    {
        Preset preset;
        preset.readXml (PresetBank (dataFolder, {}).read (*name).get(), plugin.getParameters());
        plugin.loadPreset (preset);
    }

    for (const auto& text : options.getValues ("--set"))
    {
        const auto [name, value] = splitSetting (text);

        if (auto* parameter = plugin.getParameters().getParameterByName (name))
            parameter->setString (value, true);
        else
            throw Failure ("there is no parameter \"" + name + "\"");
    }

    const auto what = options.getValue ("--show");
    shown.play (options.has ("--silent") ? 0.0 : secondsBefore,
                [&]
                {
                    if (! what.has_value())
                        return;

                    addUserPresets (shown);
                    showWindow (shown, *what);
                });

    const auto picture = shown.takePicture();
    OutputFile::write (output, [&] (juce::OutputStream& out)
                       { return juce::PNGImageFormat().writeImageToStream (picture, out); });

    std::cout << output.getFileName() << ": " << picture.getWidth() << " x " << picture.getHeight() << std::endl;
}

constexpr auto helpText =
    R"(Paints the plug-in's editor into a picture. It needs no display and leaves the user's settings alone.

  --skin NAME            the skin; else the one that a new user sees
  --preset NAME          loads a preset first, by its name or from a file
  --set "Name=value"     sets a parameter first; the value is written as in a preset's file
  --show WINDOW          opens options, about, alert, learn, quality, midi, gui, browser,
                         browser-edit, browser-saveas, import, or info:"NAME OF A PARAMETER"
  --silent               plays nothing; else noise plays, so that lights and meters show something
  --data FOLDER          where "Skins" and "Presets" lie; else the folder that the plug-in uses
  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program)";

} // namespace

juce::ConsoleApplication::Command makeScreenshotCommand()
{
    return { "screenshot", "screenshot OUT.png [options]", "Paints the editor into a picture", helpText,
             runScreenshot };
}

} // namespace K7R::host
