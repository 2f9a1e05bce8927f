#include "fuzz/fuzzsession.h"
#include "fuzz/fuzzsource.h"
#include "vexdb/dbtracker/vexpopupmenu.h"

#include <array>
#include <string_view>

// Bytes become what a person at the machine does: characters, keys, mouse, wheel, popup choices,
// menu rows, a resize, a quit, in any order, also in the middle of a command.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kMostActions = 256;
constexpr std::string_view kTyped = "LINE\n0123456789,.<- \x1b\x08icnwfpue\r+e@";
constexpr std::array kKeys = {VK_RETURN, VK_ESCAPE, VK_SPACE,  VK_LEFT, VK_UP,  VK_RIGHT,
                              VK_DOWN,   VK_F4,     VK_DELETE, VK_BACK, VK_TAB, VK_CANCEL};
constexpr std::array kMouse = {WM_MOUSEMOVE,   WM_LBUTTONDOWN, WM_LBUTTONUP,   WM_LBUTTONDBLCLK,
                               WM_RBUTTONDOWN, WM_RBUTTONUP,   WM_MBUTTONDOWN, WM_MBUTTONUP,
                               WM_MOUSEWHEEL,  WM_SIZE};
constexpr std::array kNumbers = {hostNumberOf(VexDb::CmdLine),
                                 hostNumberOf(VexDb::CmdErase),
                                 hostNumberOf(VexDb::CmdCircle),
                                 static_cast<unsigned long>(kHostUndo),
                                 static_cast<unsigned long>(kHostRedo),
                                 static_cast<unsigned long>(kHostSelectAll),
                                 static_cast<unsigned long>(kHostClearSelection),
                                 static_cast<unsigned long>(kHostZoomExtents),
                                 static_cast<unsigned long>(kHostZoomIn),
                                 static_cast<unsigned long>(kHostZoomOut),
                                 static_cast<unsigned long>(kHostZoomPrevious),
                                 static_cast<unsigned long>(kHostZoomWindow),
                                 static_cast<unsigned long>(kHostPan),
                                 static_cast<unsigned long>(kHostGrid),
                                 static_cast<unsigned long>(kHostGridSnap),
                                 static_cast<unsigned long>(kHostOrtho),
                                 static_cast<unsigned long>(kHostGripSnap),
                                 static_cast<unsigned long>(kHostNew)};

void type(CFuzzProgram& program, char typed)
{
    const char folded = typed >= 'a' && typed <= 'z' ? static_cast<char>(typed - 'a' + 'A') : typed;
    const wchar_t character = typed == '\n' ? L'\r' : static_cast<wchar_t>(typed);
    const bool isKey =
        (folded >= 'A' && folded <= 'Z') || (folded >= '0' && folded <= '9') || folded <= ' ';
    const unsigned key = typed == '\n' ? unsigned{VK_RETURN} : static_cast<unsigned>(folded);
    program.display.PostMessage(WM_KEYDOWN, isKey ? key : 0xe7u, keyLParam(character));
}

void pointAt(CFuzzProgram& program, CFuzzSource& source)
{
    const auto what = source.oneOf(kMouse);
    // Half of the positions on a coarse grid, so that things coincide; some outside.
    const int x = source.byte() * 4 - 50;
    const int y = source.byte() * 3 - 50;
    const WPARAM turn =
        what == WM_MOUSEWHEEL ? static_cast<WPARAM>((x % 2 ? 120 : -120) & 0xffff) << 16 : 0;
    program.display.PostMessage(what, turn, MAKELPARAM(x, y));
}

void act(CFuzzProgram& program, CFuzzSource& source)
{
    switch (const std::uint8_t kind = source.byte(); kind / 16) {
    case 10: program.backend.chooseNext(kPopupUnSelect + source.byte() % 60); break;
    case 11: program.display.PostMessage(WM_COMMAND, source.oneOf(kNumbers), 0); break;
    case 12: program.display.PostMessage(WM_KEYDOWN, source.oneOf(kKeys), 0); break;
    case 13: program.display.PostMessage(WM_KEYUP, source.oneOf(kKeys), 0); break;
    case 14:
        program.backend.setComposition(L"1,2");
        program.display.PostMessage(WM_IME_COMPOSITION, 0, kCompositionResult);
        break;
    case 15: {
        MSG other;
        other.message = kind % 2 == 0 ? unsigned{WM_QUIT} : unsigned{WM_PAINT};
        other.hwnd = kind % 2 == 0 ? nullptr : &program.display;
        program.backend.postMessage(other);
        break;
    }
    default:
        if (kind < 80) {
            type(program, kTyped[kind % kTyped.size()]);
        } else {
            pointAt(program, source);
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    CFuzzProgram program;
    CFuzzSource source(data, size, kMostActions);
    while (!source.empty()) {
        act(program, source);
    }
    program.run();
    program.finish();
    return 0;
}
