#pragma once

#include <windows.h>

#include <oleacc.h>

namespace tobbin {

// The system's CreateStdAccessibleObject and LresultFromObject. Their DLL is looked for in the
// system's folder alone, when it is first asked for: linked to the program, it would be looked for
// beside the program first. Errors where there is none.
HRESULT StandardAccessibleObject(HWND window, LONG part, IAccessible** object);
LRESULT AnswerWithObject(WPARAM wParam, IUnknown* object);

}  // namespace tobbin
