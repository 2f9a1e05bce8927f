#include "platform/base/vextext.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexfoldedkey.h"
#include "vexdb/dbcommand/vexinputscope.h"
#include "vexdb/dbcommand/vexprimitive.h"

#include <string>

namespace {

constexpr std::size_t kMostOfNumber = 63;
constexpr std::size_t kMostOfText = 287;

/// Collects what is typed until Return or Space; characters also go to their window, which echoes
/// them.
class TypedInput : public VexPrimitive {
public:
    /// `key` ends it too; 0 for none.
    TypedInput(CVexCommandHandler& handler, CWnd& window, std::size_t most, wchar_t key)
        : VexPrimitive(handler, window, InputPoint), m_most(most), m_key(key)
    {
    }
    [[nodiscard]] const std::wstring& text() const { return m_text; }
    /// Return or Space ended it.
    [[nodiscard]] bool isEntered() const { return m_entered; }

protected:
    VexVerdict onKey(unsigned key) override
    {
        if (isEndKey(key)) {
            m_entered = true;
            answer(InputPoint);
            return VexVerdict::kSwallow;
        }
        if (m_key != L'\0' && static_cast<wchar_t>(key) == m_key) {
            answer(InputKeyword);
            return VexVerdict::kSwallow;
        }
        return VexVerdict::kTranslate;
    }

    VexVerdict onCharacter(const MSG& message) override
    {
        const auto character = static_cast<wchar_t>(message.wParam);
        if (character == static_cast<wchar_t>(VK_BACK)) {
            return takeBack();
        }
        if (m_text.size() == m_most) {
            return VexVerdict::kSwallow; // nor echoed: the line shows what counts
        }
        m_text += character;
        return VexVerdict::kDispatch;
    }

private:
    VexVerdict takeBack()
    {
        if (m_text.empty()) {
            return VexVerdict::kSwallow; // or the echo would eat the prompt
        }
        m_text.pop_back();
        return VexVerdict::kDispatch;
    }

    std::size_t m_most;
    wchar_t m_key;
    std::wstring m_text;
    bool m_entered = false;
};

/// Waits for one of some keys. Its window sees every message before it does.
class KeyWordInput : public VexPrimitive {
public:
    KeyWordInput(CVexCommandHandler& handler, CWnd& window, const CString& keys, wchar_t& key)
        : VexPrimitive(handler, window, InputCancel), m_keys(keys), m_key(key)
    {
    }

    VexVerdict onMessage(const MSG& message) override
    {
        DispatchMessageW(&message);
        const VexVerdict verdict = VexPrimitive::onMessage(message);
        return verdict == VexVerdict::kTranslate ? verdict : VexVerdict::kSwallow;
    }

protected:
    VexVerdict onKey(unsigned key) override
    {
        if (isEndKey(key)) {
            answer(InputCancel); // with the key still unset: the caller's default
            return VexVerdict::kSwallow;
        }
        return VexVerdict::kTranslate;
    }

    VexVerdict onCharacter(const MSG& message) override
    {
        m_key = foldedKey(static_cast<wchar_t>(message.wParam));
        if (m_keys.Find(m_key) >= 0) {
            answer(InputPoint);
        }
        return VexVerdict::kSwallow;
    }

private:
    const CString& m_keys;
    wchar_t& m_key;
};

/// Runs `input` with the capture and nothing else held; a loss leaves the answer that it has.
int waitFor(CVexCommandHandler& handler, CWnd& window, VexPrimitive& input)
{
    VexInputScope scope(handler, window);
    scope.clearSnaps();
    runPump(handler, window, input);
    return input.result();
}

} // namespace

int CVexCommandHandler::GetReal(int prompt, wchar_t key, double& value)
{
    const VexBusyScope busy(*this);
    if (!askBy(prompt)) {
        return InputCancel;
    }
    TypedInput input(*this, *m_display, kMostOfNumber, key);
    const int result = waitFor(*this, *m_display, input);
    if (input.isEntered()) {
        const double typed = toNumber(input.text());
        value = typed > 0.0 ? typed : 1.0;
    } else {
        noteAnswer(result);
    }
    return result;
}

int CVexCommandHandler::GetString(int prompt, CString& text)
{
    const VexBusyScope busy(*this);
    if (!askBy(prompt)) {
        return InputCancel;
    }
    TypedInput input(*this, *m_display, kMostOfText, L'\0');
    const int result = waitFor(*this, *m_display, input);
    if (input.isEntered()) {
        text = CString(input.text());
    } else {
        noteAnswer(result);
    }
    return result;
}

int CVexCommandHandler::GetKeyWord(int prompt, const CString& keys, wchar_t& key)
{
    const VexBusyScope busy(*this);
    if (!askBy(prompt)) {
        return InputCancel;
    }
    KeyWordInput input(*this, *m_display, keys, key);
    const int result = waitFor(*this, *m_display, input);
    noteAnswer(result);
    return result;
}
