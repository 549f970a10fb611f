// What the host drives of an element. The view reaches the elements that follow the host through
// this alone, and needs to know none of their classes; each answers what it has and leaves the
// rest.
#pragma once

#include "base/QelRect.h"

#include <windows.h>

#include <cstdint>

struct SetTexts;

constexpr uint32_t METER_PINS = 32; // the ids from 1 on number the pins of the meter with id 0

// The id of the meter that a call with an id reaches: a meter with the id of a pin is hidden by
// these.
constexpr uint32_t MeterIdOf(uint32_t nId)
{
    return nId <= METER_PINS ? 0 : nId;
}

class CHostDriven {
public:
    CHostDriven() = default;
    CHostDriven(const CHostDriven&) = delete;
    CHostDriven& operator=(const CHostDriven&) = delete;

    [[nodiscard]] virtual uint32_t HostId() const { return 0; }
    [[nodiscard]] virtual bool WantsFullRedraw() const { return false; }

    // The four host parameters, by index. 0: it does not follow that one.
    virtual int SetHostParam(int32_t, uint32_t) { return 0; }
    virtual int GetHostParam(int32_t, uint32_t*) const { return 0; }

    // The drawing's status number.
    virtual void SetStatus(uint32_t) {}
    [[nodiscard]] virtual uint32_t Status() const { return 0; }

    // Settings by selector, of scales the value among them. 0: not known, or refused.
    [[nodiscard]] virtual bool KnowsSelector(uint32_t) const { return false; }
    [[nodiscard]] virtual bool HasSign(uint32_t) const { return false; }
    virtual int SetProperty(uint32_t, uint32_t) { return 0; }
    virtual int GetProperty(uint32_t, uint32_t*) const { return 0; }

    // The value (pin 0) or that of a meter's pin, in two forms, and a meter's base value.
    virtual int SetValue(uint32_t, uint32_t) { return 0; }
    virtual int SetValue(uint32_t, float) { return 0; }
    virtual int GetValue(uint32_t, uint32_t*) const { return 0; }
    virtual int GetValue(uint32_t, float*) const { return 0; }
    virtual int SetBase(float) { return 0; }
    virtual int GetBase(float*) const { return 0; }

    // A number that the host shows by identifier, in whichever form the element keeps it, and the
    // one that it shows now; and those of pins, from 1 on.
    [[nodiscard]] virtual bool FollowsNumber() const { return false; }
    [[nodiscard]] virtual bool KeepsNumber() const { return false; } // it has one from the start
    virtual void ShowNumber(double) {}
    [[nodiscard]] virtual double ShownNumber() const { return 0; }
    [[nodiscard]] virtual bool HasPins() const { return false; }
    virtual void ShowPin(uint32_t, double) {}
    [[nodiscard]] virtual double ShownPin(uint32_t) const { return 0; }
    // Whether it can be shown on its way to a new number, and how much a full circle of such a way
    // counts: 0 when there is none.
    [[nodiscard]] virtual bool CanMove() const { return false; }
    [[nodiscard]] virtual double FullTurn(double*) const { return 0; }
    [[nodiscard]] virtual bool ShowsTime() const { return false; }
    // What the drawing itself sets, beneath what the host has set. 0 without memory.
    virtual int TakeSet(const SetTexts&) { return 1; }
    // Settings and values as they were before the host set any.
    virtual void ResetValues() {}

    // The rectangle inside of a draw region's border. 0 when there is none.
    virtual int GetGraphRect(const QelRect&, RECT*) const { return 0; }

protected:
    ~CHostDriven() = default;
};
