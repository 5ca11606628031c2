// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/HostParameterMap.h"

namespace K7R
{

Parameter* HostParameterMap::get (int hostIndex) const noexcept
{
    return isValid (hostIndex) ? at (hostIndex).parameter.load() : nullptr;
}

int HostParameterMap::indexOf (const Parameter& parameter) const noexcept
{
    for (int i = 0; i < capacity; ++i)
        if (at (i).parameter.load (std::memory_order_relaxed) == &parameter)
            return i;

    return unmapped;
}

void HostParameterMap::assign (int hostIndex, Parameter& parameter) noexcept
{
    clear (indexOf (parameter));

    if (isValid (hostIndex))
        at (hostIndex).parameter = &parameter;
}

bool HostParameterMap::clear (int hostIndex) noexcept
{
    return isValid (hostIndex) && at (hostIndex).parameter.exchange (nullptr) != nullptr;
}

void HostParameterMap::replaceAll (const Table& table) noexcept
{
    // All that leave go first, so that no look-up finds a parameter at two indexes.
    for (std::size_t i = 0; i < table.size(); ++i)
        if (slots[i].parameter.load (std::memory_order_relaxed) != table[i])
            slots[i].parameter = nullptr;

    for (std::size_t i = 0; i < table.size(); ++i)
        if (slots[i].parameter.load (std::memory_order_relaxed) != table[i])
            slots[i].parameter = table[i];
}

float HostParameterMap::getHostValue (int hostIndex) const noexcept
{
    return isValid (hostIndex) ? at (hostIndex).hostValue.load() : 0.0f;
}

void HostParameterMap::setHostValue (int hostIndex, float value) noexcept
{
    if (isValid (hostIndex))
        at (hostIndex).hostValue = value;
}

bool HostParameterMap::isSetByHost (int hostIndex) const noexcept
{
    return isValid (hostIndex) && at (hostIndex).setByHost;
}

HostParameterMap::ScopedHostSet::ScopedHostSet (HostParameterMap& map, int hostIndex) noexcept :
    guard (isValid (hostIndex) ? &map.at (hostIndex).setByHost : nullptr)
{
    if (guard != nullptr)
        *guard = true;
}

HostParameterMap::ScopedHostSet::~ScopedHostSet()
{
    if (guard != nullptr)
        *guard = false;
}

} // namespace K7R
