#pragma once

#include "vexdb/dbcommand/vexinputresult.h"
#include "vexdb/dbcommand/vexpump.h"

class CVexCommandHandler;
class CVexDbDatabase;
class CWnd;

/// An input primitive in the pump: what all of them do with the keys that cancel and with the
/// arrows. What a kind does not look at goes to its window.
class VexPrimitive : public VexInput {
public:
    /// `result` is what a loss of the capture leaves as the answer.
    VexPrimitive(CVexCommandHandler& handler, CWnd& window, int result);

    VexVerdict onMessage(const MSG& message) override;
    [[nodiscard]] int result() const { return m_result; }

protected:
    /// A key other than Escape, Ctrl+Break and the arrows goes down.
    virtual VexVerdict onKey(unsigned key) = 0;
    virtual VexVerdict onCharacter(const MSG&) { return VexVerdict::kDispatch; }
    /// Everything but key-downs and characters.
    virtual VexVerdict onOther(const MSG&) { return VexVerdict::kDispatch; }

    void answer(int result);
    [[nodiscard]] bool isInside(const MSG& mouse) const;
    [[nodiscard]] CVexCommandHandler& handler() const { return m_handler; }
    [[nodiscard]] CVexDbDatabase& database() const;
    [[nodiscard]] CWnd& window() const { return m_window; }

private:
    CVexCommandHandler& m_handler;
    CWnd& m_window;
    int m_result;
};

/// The keys that end a value: Return and Space.
bool isEndKey(unsigned key);
/// A left press; the second one of a double click is one more.
bool isPress(const MSG& message);
