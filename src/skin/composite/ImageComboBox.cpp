// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/composite/ImageComboBox.h"

#include "parameters/BoolParameter.h"
#include "parameters/IntParameter.h"
#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "widgets/controls/ChoiceAccessibility.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr int maximumTiles = 1024;

/** The items that a parameter has, counted from the value 0; 0 if it has no such list. */
int countItems (const Parameter& parameter)
{
    if (const auto* number = dynamic_cast<const IntParameter*> (&parameter))
        return juce::jlimit (0, maximumTiles - 1, number->getMaximum()) + 1;

    return dynamic_cast<const BoolParameter*> (&parameter) != nullptr ? 2 : 0;
}

juce::StringArray readItemTexts (const Parameter& parameter, int numItems)
{
    juce::StringArray texts;
    const auto copy = parameter.clone (parameter.getId(), parameter.getName());

    for (int i = 0; i < numItems; ++i)
    {
        copy->setInt (i, false);
        texts.add (copy->getDisplayText());
    }

    return texts;
}

} // namespace

//==============================================================================
/** The tiles, from the left and from the top. */
class ImageComboBox::Picker final : public juce::Component
{
public:
    Picker (ImageComboBox& owner, const Parameter& parameter) :
        box (owner),
        strip (owner.getTileStrip()),
        numTiles (countTiles (owner, parameter)),
        perRow (juce::jlimit (1, juce::jmax (1, numTiles), owner.tilesInRow)),
        texts (readItemTexts (parameter, owner.showValues || ! owner.getTileStrip().isValid() ? numTiles : 0)),
        highlighted (-1)
    {
        setTitle (parameter.getName());
        setWantsKeyboardFocus (true);
        setSize (perRow * tileWidth(), (numTiles + perRow - 1) / perRow * tileHeight());
    }

    /** Of its top left corner, in the box. */
    juce::Point<int> getPlace() const
    {
        const auto place =
            box.justification == Justification::centred
                ? box.getLocalBounds().getCentre() - getLocalBounds().getCentre()
                : juce::Point<int>()
                      - getTile (juce::jlimit (0, juce::jmax (0, numTiles - 1), box.alignTile)).getPosition();
        return place + box.offset;
    }

    void paint (juce::Graphics& g) override
    {
        // A skin's strip may have many thousands of frames: only those that are seen.
        const auto clip = g.getClipBounds();
        const auto firstRow = juce::jmax (0, clip.getY() / juce::jmax (1, tileHeight()));

        for (int i = firstRow * perRow; i < numTiles && getTile (i).getY() < clip.getBottom(); ++i)
            if (getTile (i).intersects (clip))
                paintTile (g, i);

        g.setColour (juce::Colours::black);
        g.drawRect (getLocalBounds(), 1);
    }

    void mouseMove (const juce::MouseEvent& e) override { setHighlighted (findTile (e.getPosition())); }
    void mouseExit (const juce::MouseEvent&) override { setHighlighted (-1); }

    void mouseDown (const juce::MouseEvent& e) override
    {
        if (const auto tile = findTile (e.getPosition()); tile >= 0 && e.mods.isLeftButtonDown())
            box.choose (tile, &e); // which deletes this
    }

    bool keyPressed (const juce::KeyPress& key) override
    {
        if (key == juce::KeyPress::escapeKey)
            box.closePicker (nullptr);
        else if (key == juce::KeyPress::returnKey || key == juce::KeyPress::spaceKey)
            highlighted >= 0 ? box.choose (highlighted, nullptr) : box.closePicker (nullptr);
        else if (const auto step = getStep (key); step != 0)
            moveHighlight (step);
        else
            return false;

        return true;
    }

private:
    static int countTiles (const ImageComboBox& owner, const Parameter& parameter)
    {
        const auto numItems = countItems (parameter);

        if (! owner.getTileStrip().isValid())
            return numItems;

        // A frame that stands for nothing is no choice.
        const auto numFrames = juce::jmin (maximumTiles, owner.getTileStrip().getNumFrames());
        return numItems > 0 ? juce::jmin (numItems, numFrames) : numFrames;
    }

    int tileWidth() const { return strip.isValid() ? strip.getFrameWidth() : box.getWidth(); }
    int tileHeight() const { return strip.isValid() ? strip.getFrameHeight() : box.getHeight(); }

    juce::Rectangle<int> getTile (int index) const
    {
        return { index % perRow * tileWidth(), index / perRow * tileHeight(), tileWidth(), tileHeight() };
    }

    int findTile (juce::Point<int> place) const
    {
        if (! getLocalBounds().contains (place))
            return -1;

        const auto index = place.y / tileHeight() * perRow + place.x / tileWidth();
        return index < numTiles ? index : -1;
    }

    void setHighlighted (int tile)
    {
        if (std::exchange (highlighted, tile) != tile)
            repaint();
    }

    int getStep (const juce::KeyPress& key) const
    {
        const std::pair<int, int> steps[] { { juce::KeyPress::leftKey, -1 },
                                            { juce::KeyPress::rightKey, 1 },
                                            { juce::KeyPress::upKey, -perRow },
                                            { juce::KeyPress::downKey, perRow } };

        for (const auto& [code, step] : steps)
            if (key == juce::KeyPress (code))
                return step;

        return 0;
    }

    /** From the present item, if the mouse is on none. */
    void moveHighlight (int step)
    {
        const auto from = highlighted >= 0 ? highlighted : box.currentIndex;

        if (juce::isPositiveAndBelow (from + step, numTiles))
            setHighlighted (from + step);
        else if (juce::isPositiveAndBelow (from, numTiles))
            setHighlighted (from);

        if (auto* parameter = box.getParameter (0); parameter != nullptr && highlighted >= 0)
            juce::AccessibilityHandler::postAnnouncement (readItemTexts (*parameter, highlighted + 1)[highlighted],
                                                          juce::AccessibilityHandler::AnnouncementPriority::medium);
    }

    void paintTile (juce::Graphics& g, int index) const
    {
        constexpr float faint = 0.25f;

        const auto tile = getTile (index);
        const auto accent = findColour (DefaultLookAndFeel::accentId);

        if (strip.isValid())
            strip.draw (g, index, tile.getPosition());
        else
            Fallbacks::paintItem (g, tile, texts[index]);

        if (index == highlighted)
        {
            g.setColour (accent.withAlpha (faint));
            g.fillRect (tile);
        }

        if (strip.isValid() && box.showValues)
            paintValue (g, tile, texts[index]);

        g.setColour (accent);

        if (index == highlighted)
            g.drawRect (tile, 2);
        else if (index == box.currentIndex)
            g.drawRect (tile.reduced (1), 1);
    }

    /** On a plate at the foot of the tile, where it can be read over any image. */
    static void paintValue (juce::Graphics& g, juce::Rectangle<int> tile, const juce::String& text)
    {
        constexpr float largestFont = 12.0f, shareOfTile = 0.35f;

        const auto font = juce::jmin (largestFont, shareOfTile * static_cast<float> (tile.getHeight()));
        const auto plate = tile.withTop (tile.getBottom() - juce::roundToInt (font * 1.3f));
        g.setColour (juce::Colours::black.withAlpha (0.7f));
        g.fillRect (plate);
        g.setColour (juce::Colours::white);
        g.setFont (font);
        g.drawFittedText (text, plate.reduced (2, 1), juce::Justification::centred, 1);
    }

    ImageComboBox& box;
    const FilmStrip& strip;
    const int numTiles, perRow;
    const juce::StringArray texts;
    int highlighted;
};

//==============================================================================
ImageComboBox::ImageComboBox (const juce::String& controlName) : SkinParameterController (controlName) {}

ImageComboBox::~ImageComboBox() = default;

void ImageComboBox::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    applyPosition (*this, findExactChild (element, "pos"));
    applySize (*this, findExactChild (element, "size"));

    if (const auto* gfx = findExactChild (element, "gfx"))
        strip = readStrip (*gfx, "resource", "framesNum", skin);

    if (strip.isValid())
        setSize (strip.getFrameWidth(), strip.getFrameHeight());

    if (const auto* child = findExactChild (element, "picker"))
        readPicker (*child, skin);

    if (const auto* param = findExactChild (element, "param"))
        readParameter (*param, skin);
}

void ImageComboBox::readPicker (const juce::XmlElement& element, SkinFile& skin)
{
    tileStrip = readStrip (element, "resource", "framesNum", skin);
    tilesInRow = element.getIntAttribute ("tilesInRow", tilesInRow);

    const auto& mode = element.getStringAttribute ("justification");

    if (mode == "centred" || mode == "tileAligned")
    {
        justification = mode == "centred" ? Justification::centred : Justification::tileAligned;
        alignTile = mode == "centred" ? 0 : element.getIntAttribute ("tile");
        offset = readPlace (element, "xOfs", "yOfs");
    }

    const auto& values = element.getStringAttribute ("values");
    showValues = values.isEmpty() || values == "on" || values == "1";
}

std::vector<SkinControl::Part> ImageComboBox::getParts()
{
    if (auto* parameter = getParameter (0))
        return { { this, parameter } };

    return {};
}

void ImageComboBox::updateFromParameter (Parameter& parameter)
{
    currentIndex = parameter.getInt();
    repaint();

    if (picker != nullptr)
        picker->repaint();
}

//==============================================================================
void ImageComboBox::mouseDown (const juce::MouseEvent& e)
{
    if (e.mods.isLeftButtonDown() && ! belongsToEditor (e.mods))
        togglePicker();
}

void ImageComboBox::togglePicker()
{
    if (picker != nullptr)
        return closePicker (nullptr);

    if (getNumParameters() == 0 || ! isEnabled())
        return;

    picker = std::make_unique<Picker> (*this, *getParameter (0));

    if (picker->getBounds().isEmpty()
        || ! FloatingComponentOwner::showFloating (*this, *picker, picker->getPlace(), this, this))
        picker.reset();
}

void ImageComboBox::closePicker (const juce::MouseEvent* event)
{
    if (picker != nullptr)
        FloatingComponentOwner::hideFloating (*this, *picker, event);
}

void ImageComboBox::floatingComponentHidden (juce::Component&, const juce::MouseEvent*)
{
    picker.reset();
}

void ImageComboBox::endPendingGesture()
{
    closePicker (nullptr);
    SkinParameterController::endPendingGesture();
}

void ImageComboBox::choose (int index, const juce::MouseEvent* event)
{
    auto& parameter = *getParameter (0);
    openGesture (parameter);
    parameter.setInt (index, true);
    notifyMoved (parameter);
    closeGestures();
    closePicker (event);
}

//==============================================================================
void ImageComboBox::paint (juce::Graphics& g)
{
    if (strip.isValid())
        strip.draw (g, currentIndex);
    else
        Fallbacks::paintComboBox (g, getLocalBounds(), getItemText());
}

juce::String ImageComboBox::getItemText() const
{
    return getNumParameters() > 0 ? getParameter (0)->getDisplayText() : juce::String();
}

std::unique_ptr<juce::AccessibilityHandler> ImageComboBox::createAccessibilityHandler()
{
    return createChoiceAccessibility (
        *this, [this] { return getItemText(); }, [this] { togglePicker(); });
}

} // namespace K7R
