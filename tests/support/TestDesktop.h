// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/windows/FloatingLayer.h"
#include "widgets/windows/ModalComponent.h"

namespace K7R::test
{

/** In place of an editor: half of its width and height is for windows, a quarter from the top left corner. */
class TestDesktop final : public juce::Component, public ModalComponent::Desktop
{
public:
    TestDesktop()
    {
        setLookAndFeel (&look);
        setSize (800, 600);
        setVisible (true);
    }

    ~TestDesktop() override { setLookAndFeel (nullptr); }

    juce::Rectangle<int> getModalArea() const override
    {
        return { getWidth() / 4, getHeight() / 4, getWidth() / 2, getHeight() / 2 };
    }

private:
    DefaultLookAndFeel look;
};

/** In place of an editor: what floats lies in it. */
class FloatingDesktop final : public juce::Component, public FloatingComponentOwner
{
public:
    FloatingDesktop()
    {
        setSize (400, 300);
        setVisible (true);
    }

    void showFloatingComponent (juce::Component& component, juce::Point<int> position, juce::Component* relativeTo,
                                Callback* callback) override
    {
        layer.show (component, position, relativeTo, callback);
    }

    void hideFloatingComponent (juce::Component& component, const juce::MouseEvent* e) override
    {
        layer.hide (component, e);
    }

    FloatingLayer layer { *this };
};

template <typename Type>
void collect (juce::Component& parent, std::vector<Type*>& found)
{
    for (int i = 0; auto* child = parent.getChildComponent (i); ++i)
    {
        if (auto* wanted = dynamic_cast<Type*> (child))
            found.push_back (wanted);

        collect (*child, found);
    }
}

/** All components of a class below another, from the back to the front. */
template <typename Type>
std::vector<Type*> allOf (juce::Component& parent)
{
    std::vector<Type*> found;
    collect (parent, found);
    return found;
}

} // namespace K7R::test
