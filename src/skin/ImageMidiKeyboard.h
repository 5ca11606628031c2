// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/PlacedComponent.h"

namespace quilvane
{

/** The place of a keyboard of images. It takes room and shows nothing yet. */
class ImageMidiKeyboard final : public PlacedComponent
{
public:
    using PlacedComponent::PlacedComponent;
};

} // namespace quilvane
