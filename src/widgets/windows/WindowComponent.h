// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "widgets/windows/ModalComponent.h"

namespace K7R
{

/** A framed window with a title bar inside the editor. */
class WindowComponent : public ModalComponent, protected juce::Button::Listener
{
public:
    /** How windows ask their look to be drawn. */
    struct LookAndFeelMethods
    {
        virtual ~LookAndFeelMethods() = default;

        virtual void drawWindowBackground (juce::Graphics&, WindowComponent&) = 0;
        virtual void drawWindowFrame (juce::Graphics&, WindowComponent&) = 0;

        /** In the height of a title bar. */
        virtual juce::Font getWindowTitleFont (const WindowComponent&) = 0;
    };

    explicit WindowComponent (const juce::String& title);
    ~WindowComponent() override;

    /** Sets the size so that the content has this one; the window is never below its least size. */
    void setContentSize (int width, int height);

    void setTitle (const juce::String&);
    const juce::String& getTitle() const noexcept { return title; }

    /** Shown at the left end of the title bar. */
    void setTitleIcon (std::unique_ptr<juce::Drawable>);

    void setTitleBarVisible (bool);
    void setCloseButtonVisible (bool);

    bool isTitleBarVisible() const noexcept { return titleBarVisible; }
    int getTitleBarHeight() const noexcept { return titleBarHeight; }

    // Empty without a title bar.
    juce::Rectangle<int> getTitleArea() const noexcept { return titleArea; }
    juce::Rectangle<int> getTitleTextArea() const noexcept { return titleTextArea; }

    juce::Rectangle<int> getContentArea() const noexcept { return contentArea; }
    const juce::Font& getTitleFont() const noexcept { return titleFont; }

    /** Shows the window in the middle of the editor, with the keyboard's focus if it wants it. */
    virtual void open();

    /** As the close button does. */
    void dismiss() override;

    void resized() override;
    void paint (juce::Graphics&) override;
    void lookAndFeelChanged() override;
    bool keyPressed (const juce::KeyPress&) override;

    static constexpr int minimumWidth = 250, minimumHeight = 120;

protected:
    void buttonClicked (juce::Button*) override;
    const juce::Button& getCloseButton() const noexcept { return closeButton; }

    /** What a window does that lives on when it's closed: Escape closes it. */
    bool escapeCloses = true;

private:
    void readLook();

    bool titleBarVisible = true, closeButtonVisible = true;
    static constexpr int titleBarHeight = 31, titleInset = 3;
    juce::String title;
    juce::Font titleFont;
    juce::DrawableButton closeButton { "CloseButton", juce::DrawableButton::ImageFitted };
    std::unique_ptr<juce::Drawable> titleIcon;
    const juce::BorderSize<int> contentMargins { 6, 6, 9, 6 };
    const juce::BorderSize<int> frameBorders { 3, 3, 3, 3 };
    juce::Rectangle<int> titleArea, titleTextArea, contentArea;
};

} // namespace K7R
