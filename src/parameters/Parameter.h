// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <memory>

#include <juce_events/juce_events.h>

#include "parameters/ValueFormat.h"
#include "support/ListenerArray.h"

namespace K7R
{

class Parameter;
class UpdateRelay;

/** Gives a parameter a display text of its own. */
class ParameterTextFormatter
{
public:
    virtual ~ParameterTextFormatter() = default;

    /** The whole text, including any unit. Any thread. */
    virtual juce::String getText (const Parameter&) const = 0;
};

/** One named, typed, observable value.

    The host talks to it in normalised values (0 to 1), presets in text, signal processing in plain
    values, the user interface in all of them. The value is one atomic word, or two: any thread may
    read and set it at any time, except for StringParameter, which takes a lock. There is no queue
    and no smoothing here.

    A change that differs from the present value and asks for notification calls the listeners
    synchronously, on the changing thread and from the last added to the first; the asynchronous
    listeners follow later on the message thread, once for any number of changes in between, and
    read the value that then stands.

    A number that is not a number (NaN) changes nothing and tells nobody.

    Owned by a ParameterManager. Listeners are not owned; they are added and removed on the message
    thread, also from within a callback.
*/
class Parameter : private juce::AsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        virtual void parameterChanged (Parameter&) = 0;
        virtual void parameterGestureBegan (Parameter&) {}
        virtual void parameterGestureEnded (Parameter&) {}
    };

    ~Parameter() override;

    //==============================================================================
    int getId() const noexcept { return parameterId; }
    const juce::String& getName() const noexcept { return parameterName; }

    /** Whether host maps and MIDI maps may hold this parameter. */
    bool isAutomatable() const noexcept { return automatable; }
    bool isMeta() const noexcept { return meta; }
    const juce::String& getUnit() const noexcept { return unit; }
    ValueFormat getFormat() const noexcept { return format; }

    // While the parameter table is read only.
    void setAutomatable (bool shouldBe) noexcept { automatable = shouldBe; }
    void setMeta (bool shouldBe) noexcept { meta = shouldBe; }
    void setUnit (const juce::String& newUnit) { unit = newUnit; }
    void setFormat (ValueFormat newFormat) noexcept { format = newFormat; }
    void setTextFormatter (const ParameterTextFormatter* formatter) noexcept { textFormatter = formatter; }

    /** The relay that serves changes of other threads than the message thread; without one every
        change is posted. Set before the first change. */
    void setUpdateRelay (UpdateRelay* newRelay) noexcept { relay = newRelay; }

    //==============================================================================
    /** A new parameter of the same class with the same range, value, flags, unit and format, and
        with no listeners. */
    virtual std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const = 0;

    virtual float getFloat() const = 0;
    virtual float getNormalised() const = 0;
    virtual int getInt() const = 0;
    virtual bool getBool() const = 0;

    /** Machine text without a unit, as presets keep it. */
    virtual juce::String getString() const = 0;
    virtual juce::var getVar() const = 0;

    // Each returns whether the value has become another one. Who doesn't let it notify, does so later with
    // notifyListeners().
    virtual bool setFloat (float value, bool notify) = 0;
    virtual bool setNormalised (float value, bool notify) = 0;
    virtual bool setInt (int value, bool notify) = 0;
    virtual bool setBool (bool value, bool notify) = 0;

    /** Takes machine text. Parses and may allocate, so not for the audio thread. */
    virtual bool setString (const juce::String& text, bool notify) = 0;

    /** Takes the value of another parameter, in the form that this class keeps. */
    virtual bool copyFrom (const Parameter& other, bool notify) = 0;

    /** What hosts and displays show, with the unit. */
    juce::String getDisplayText() const;

    /** Takes a text that a user typed: what getDisplayText() gives, with the unit, the beginning of it or none, and
        names in any case. A number beyond the range gives the nearer end. The texts of a ParameterTextFormatter are
        read as machine text.
        @returns false for a text that names no value, which changes nothing */
    bool setDisplayText (const juce::String& text, bool notify);

    /** The same for a plain value that a user typed, with the limits that the user sees: those of setNormalised().
        @returns false for a number that isn't among the values */
    virtual bool setTypedNumber (double number, bool notify) = 0;

    //==============================================================================
    void addListener (Listener*);
    void removeListener (Listener*);
    void addAsyncListener (Listener*);
    void removeAsyncListener (Listener*);

    /** Brackets a user's gesture; listeners hear of the first begin and the first end only. */
    void beginGesture();
    void endGesture();

    /** Tells all listeners as if the value had changed. */
    void notifyListeners();

    /** Serves a change that another thread left behind; called by the owner of the relay, on the
        message thread. */
    void deliverDeferredUpdate();

protected:
    Parameter (int id, const juce::String& name);

    void copyPropertiesTo (Parameter& other) const;

    /** Implements setDisplayText() for a parameter without a format. */
    virtual bool setTypedText (const juce::String& text, bool notify) = 0;

private:
    void triggerUpdate();
    void handleAsyncUpdate() override;

    const int parameterId;
    const juce::String parameterName;
    bool automatable = false;
    bool meta = false;
    juce::String unit;
    ValueFormat format = ValueFormat::none;
    const ParameterTextFormatter* textFormatter = nullptr;
    UpdateRelay* relay = nullptr;

    ListenerArray<Listener> listeners;
    ListenerArray<Listener> asyncListeners;
    std::atomic<bool> gestureActive { false };
    std::atomic<bool> updateDeferred { false };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Parameter)
};

} // namespace K7R
