// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "parameters/Parameter.h"
#include "support/UpdateRelay.h"

namespace K7R
{

/** Owns every parameter of a plug-in and finds them by id and by name.

    It is filled while the plug-in is built: from the parameter table, then with the framework's own
    parameters. After that it only changes values, so that look-ups may come from any thread; they
    take a read-write lock, so the audio thread keeps pointers instead.

    Look-ups of unknown ids and names give null or empty, and operations on them do nothing.
*/
class ParameterManager
{
public:
    ParameterManager();
    virtual ~ParameterManager();

    /** Replaces all parameters by those of a table.

        The document's root is "PluginParameters"; each child "param" has an `index` (the id), a
        `name`, and by `type` ("float", "int", "string", "bool", "state", "logic", "answer", "enum",
        "note") its range and `value`, with the optional flags `auto` and `meta`, a `unit` and a
        `format`. A child without index or name, of an unknown type, or with an id or name that is
        taken is skipped. Null, or another root, leaves the manager empty. */
    void loadFromXml (const juce::XmlElement* table);

    /** Adds one parameter; false, and the parameter is deleted, if its id or name is taken. */
    bool addParameter (std::unique_ptr<Parameter>);

    /** The table's "application" attribute. */
    const juce::String& getApplication() const noexcept { return application; }

    //==============================================================================
    /** In the order of addition. Not while parameters are added. */
    const std::vector<std::unique_ptr<Parameter>>& getParameters() const noexcept { return parameters; }

    Parameter* getParameter (int id) const;

    /** Compared with regard to case. */
    Parameter* getParameterByName (const juce::String& name) const;

    juce::String getName (int id) const;

    /** The machine text of the value. */
    juce::String getValueString (int id) const;
    void setValueString (int id, const juce::String& text);

    /** Copies a value from one parameter to another, if both exist. */
    void copyValue (int targetId, int sourceId);

    //==============================================================================
    void addListener (int id, Parameter::Listener*);

    /** Removes an asynchronous listener from all parameters. */
    void removeFromAll (Parameter::Listener*);

    /** Tells the listeners of every parameter, as if each had changed. */
    void notifyAll();

    /** Starts to serve asynchronous listeners of changes from other threads; message thread. */
    void startUpdates() { relay.start(); }

    /** Keeps each parameter's value as its default. Once, at the end of the start-up. */
    void captureDefaults();

    /** A parameter that has the default kept by captureDefaults(), and no listeners; null for an unknown id. */
    const Parameter* getDefault (int id) const;

    /** The default, normalised; 0 for an unknown id. */
    float getDefaultNormalised (int id) const;

protected:
    /** Creates a parameter of the table's type "float"; a product picks its curves by id here. */
    virtual std::unique_ptr<Parameter> createFloatParameter (int id, const juce::String& name, float minimum,
                                                             float maximum, float defaultValue);

    /** A formatter for a parameter of the table, owned by the product; null for none. */
    virtual const ParameterTextFormatter* createTextFormatter (int id);

private:
    std::unique_ptr<Parameter> createParameter (const juce::XmlElement& row);
    void deliverDeferredUpdates();

    mutable juce::ReadWriteLock lock;
    std::vector<std::unique_ptr<Parameter>> parameters;
    juce::String application;
    std::unordered_map<int, Parameter*> byId;
    std::unordered_map<juce::String, Parameter*> byName;
    std::unordered_map<int, std::unique_ptr<Parameter>> defaults;

    // Last, so that its ticks end before the parameters go.
    UpdateRelay relay;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ParameterManager)
};

} // namespace K7R
