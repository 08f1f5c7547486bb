#include "platform/ProgressBar_win32.h"

#include <commctrl.h>

namespace tobbin {

void ShowStepsIn(HWND bar, const StepsDone& steps) {
    const bool moves = steps.all == 0;
    const LONG_PTR style = GetWindowLongPtrW(bar, GWL_STYLE);
    if (moves != ((style & PBS_MARQUEE) != 0)) {
        SetWindowLongPtrW(bar, GWL_STYLE, style ^ LONG_PTR{PBS_MARQUEE});
        SendMessageW(bar, PBM_SETMARQUEE, moves, 0);
    }
    if (moves)
        return;
    SendMessageW(bar, PBM_SETRANGE32, 0, static_cast<LPARAM>(steps.all));
    SendMessageW(bar, PBM_SETPOS, static_cast<WPARAM>(steps.done), 0);
    UpdateWindow(bar);
}

}  // namespace tobbin
