#pragma once

#include "platform/base/vexexport.h"
#include "platform/window/vexmessage.h"

class CVexCommandHandler;
class CWnd;

/// What becomes of a message that an input has looked at.
enum class VexVerdict {
    kSwallow,   // nobody else sees it
    kDispatch,  // its window gets it
    kTranslate, // a key that may become a character, and goes no further itself
};

/// An input that waits in the pump: a primitive, a selection or a tracker.
class VEXDB_EXPORT VexInput {
public:
    virtual ~VexInput() = default;
    /// Looks at the next message. It calls finish() when it has its answer.
    virtual VexVerdict onMessage(const MSG& message) = 0;
    // Around a message that lets the window repaint: what is drawn in XOR goes off first and comes
    // back afterwards, or it would stay behind for ever.
    virtual void takeOff() {}
    virtual void putBack() {}

    [[nodiscard]] bool isDone() const { return m_done; }

protected:
    void finish() { m_done = true; }

private:
    bool m_done = false;
};

/// Hands one message after the other to `input` until it is done. False when `window` does not hold
/// the capture any more: the input is lost, and the handler marked so. A quit that arrives is kept
/// in the handler for the host to post again.
VEXDB_EXPORT bool runPump(CVexCommandHandler& handler, CWnd& window, VexInput& input);
