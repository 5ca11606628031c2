// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

/** The drawing inside the document's frame: strokes of 2 units with round ends, on a grid of 24. */
const char* bodyOf (Icons::Name name)
{
    switch (name)
    {
        case Icons::Name::close: return "<path d='M6 6 L18 18 M18 6 L6 18'/>";
        case Icons::Name::tick: return "<path d='M5 12.5 L10 17.5 L19 7'/>";
        case Icons::Name::arrowDown: return "<path d='M6 9 L12 15 L18 9'/>";
        case Icons::Name::arrowLeft: return "<path d='M15 6 L9 12 L15 18'/>";
        case Icons::Name::arrowRight: return "<path d='M9 6 L15 12 L9 18'/>";
        case Icons::Name::arrowUp: return "<path d='M6 15 L12 9 L18 15'/>";
        case Icons::Name::plus: return "<path d='M12 5 L12 19 M5 12 L19 12'/>";
        case Icons::Name::minus: return "<path d='M5 12 L19 12'/>";
        case Icons::Name::quality: return "<path d='M3 12 C5 4 8 4 10 12 C12 20 15 20 17 12 C18 8 19.5 6 21 6'/>";
        case Icons::Name::midi:
            return "<path d='M12 3 A9 9 0 1 0 12.01 3 Z'/>"
                   "<path d='M7 13 L7 13.01 M8.8 8.6 L8.8 8.61 M12 7 L12 7.01 M15.2 8.6 L15.2 8.61 M17 13 L17 13.01'/>";
        case Icons::Name::skin: return "<path d='M4 5 L20 5 L20 19 L4 19 Z M4 9 L20 9 M10 9 L10 19'/>";
        case Icons::Name::gear:
            return "<path d='M4 7 L20 7 M4 12 L20 12 M4 17 L20 17 M9 5 L9 9 M15 10 L15 14 M7 15 L7 19'/>";
        case Icons::Name::folder: return "<path d='M3 6 L9 6 L11 8 L21 8 L21 19 L3 19 Z'/>";
        case Icons::Name::file: return "<path d='M6 3 L14 3 L18 7 L18 21 L6 21 Z M14 3 L14 7 L18 7'/>";
        case Icons::Name::save: return "<path d='M12 4 L12 15 M7 10 L12 15 L17 10 M4 20 L20 20'/>";
        case Icons::Name::record: return "<path d='M12 4 A8 8 0 1 0 12.01 4 Z M12 10 A2 2 0 1 0 12.01 10 Z'/>";
        case Icons::Name::reset: return "<path d='M5 5 L5 10 L10 10 M5.5 9.5 A8 8 0 1 1 4 13'/>";
        case Icons::Name::resize: return "<path d='M14 4 L20 4 L20 10 M20 4 L13 11 M10 20 L4 20 L4 14 M4 20 L11 13'/>";
        case Icons::Name::user:
            return "<path d='M12 4 A4 4 0 1 0 12.01 4 Z M4 20 C4 15 8 14 12 14 C16 14 20 15 20 20 Z'/>";
        case Icons::Name::factory: return "<path d='M4 20 L4 9 L9 12 L9 9 L14 12 L14 4 L18 4 L20 20 Z'/>";
        case Icons::Name::import: return "<path d='M4 14 L4 20 L20 20 L20 14 M12 4 L12 15 M8 11 L12 15 L16 11'/>";
        case Icons::Name::exportArrow: return "<path d='M4 14 L4 20 L20 20 L20 14 M12 15 L12 4 M8 8 L12 4 L16 8'/>";
        case Icons::Name::edit: return "<path d='M4 20 L5 15 L16 4 L20 8 L9 19 Z M13 7 L17 11'/>";
        case Icons::Name::bin: return "<path d='M4 6 L20 6 M9 6 L9 3 L15 3 L15 6 M6 6 L7 21 L17 21 L18 6'/>";
        case Icons::Name::list:
            return "<path d='M9 6 L20 6 M9 12 L20 12 M9 18 L20 18 M4.5 6 L4.5 6.01 M4.5 12 L4.5 12.01 M4.5 18 L4.5 "
                   "18.01'/>";
    }

    return "";
}

} // namespace

std::unique_ptr<juce::Drawable> Icons::create (Name name)
{
    // The empty frame keeps all icons at one scale.
    return fromSvg ("<svg viewBox='0 0 24 24' width='24' height='24'><rect width='24' height='24' fill='none'/>"
                    "<g fill='none' stroke='#e6e6e6' "
                    "stroke-width='2' stroke-linecap='round' stroke-linejoin='round'>"
                    + juce::String (bodyOf (name)) + "</g></svg>");
}

std::unique_ptr<juce::Drawable> Icons::create (Name name, juce::Colour newColour)
{
    auto drawable = create (name);

    if (drawable != nullptr)
        drawable->replaceColour (juce::Colour (colour), newColour);

    return drawable;
}

void Icons::setUp (juce::DrawableButton& button, Name name, const juce::String& title, juce::Colour normalColour)
{
    const auto normal = create (name, normalColour);
    const auto over = create (name, juce::Colour (overColour));
    button.setImages (normal.get(), over.get());
    button.setColour (juce::DrawableButton::backgroundColourId, juce::Colours::transparentBlack);
    button.setColour (juce::DrawableButton::backgroundOnColourId, juce::Colours::transparentBlack);
    button.setTitle (title);
    button.setTooltip (title);
    button.setWantsKeyboardFocus (false);
    button.setMouseClickGrabsKeyboardFocus (false);
}

std::unique_ptr<juce::Drawable> Icons::fromSvg (const juce::String& text)
{
    const auto xml = juce::parseXML (text);
    return xml != nullptr ? juce::Drawable::createFromSVG (*xml) : nullptr;
}

} // namespace K7R
