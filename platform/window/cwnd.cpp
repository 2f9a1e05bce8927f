#include "platform/window/cwnd.h"

#include "platform/window/vexbackend.h"

#include <algorithm>
#include <vector>

namespace {

// Never destroyed, since a window may outlive main. A program has a handful of windows.
std::vector<const CWnd*>& livingWindows()
{
    static auto* const windows = new std::vector<const CWnd*>;
    return *windows;
}

} // namespace

CWnd::CWnd()
{
    livingWindows().push_back(this);
}

CWnd::~CWnd()
{
    std::erase(livingWindows(), this);
    CVexBackend::current().forget(this);
}

bool CWnd::isLiving(const CWnd* window)
{
    const std::vector<const CWnd*>& windows = livingWindows();
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

void CWnd::PostMessage(unsigned message, WPARAM wParam, LPARAM lParam)
{
    CVexBackend& backend = CVexBackend::current();
    backend.postMessage({this, message, wParam, lParam, backend.cursorPosition()});
}

void CWnd::SetCapture()
{
    CVexBackend::current().setCapture(this);
}
