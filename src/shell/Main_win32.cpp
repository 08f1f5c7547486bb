#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "platform/Process_win32.h"
#include "platform/Wide_win32.h"
#include "platform/WindowsEnvironment_win32.h"
#include "shell/Application.h"
#include "shell/MainFrame_win32.h"
#include "shell/Searching_win32.h"
#include "shell/SingleInstance_win32.h"
#include "shell/StartUp.h"
#include "shell/StartUpWindows_win32.h"

namespace tobbin {
namespace {

void PrepareControls() {
    INITCOMMONCONTROLSEX controls = {};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_BAR_CLASSES | ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES |
                     ICC_STANDARD_CLASSES | ICC_USEREX_CLASSES | ICC_PROGRESS_CLASS |
                     ICC_LINK_CLASS;
    InitCommonControlsEx(&controls);
}

int Run() {
    PrepareProcess();
    PrepareControls();
    const std::string folder = ProgramFolder();
    SingleInstance instance(folder);
    const std::vector<std::string> files = FilesOnCommandLine();
    const auto outcome =
        instance.IsFirst() ? SingleInstance::Outcome::IsFirstNow : instance.HandOver(files);
    if (outcome == SingleInstance::Outcome::HandedOver)
        return 0;

    WindowsEnvironment environment;
    const bool noAccess = outcome == SingleInstance::Outcome::NoAccess;
    if (noAccess || outcome == SingleInstance::Outcome::NoAnswer) {
        environment.Interfaces().dialogs.Tell(
            noAccess ? "Tobbin is running already as administrator.  Go on there, or close it and "
                       "start Tobbin again."
                     : "Tobbin is running already, but doesn't answer.  Wait until it does, or end "
                       "it in the Task Manager, and start Tobbin again.",
            BoxIcon::Stop);
        return 1;
    }
    Application application(environment.Interfaces(),
                            {folder, SystemFolder(), PersonalDataFolder(), SystemFolderOf32Bit()});
    MainFrame frame(application, environment);
    if (!frame.Open())
        return 1;
    instance.MarkWindow(frame.Handle());
    StartUpWindows windows(application.Windows(), frame);
    environment.Events().SetFilter([&](MSG& message) {
        const HWND splash = windows.SplashHandle();
        return (splash != nullptr && IsDialogMessageW(splash, &message)) ||
               SearchingPopup::TranslateKeys(message) || frame.TranslateKeys(message);
    });
    environment.Events().SetBetweenMessages([&] { frame.BetweenMessages(); });
    if (!StartUp(application, windows).Run())
        return 1;
    frame.Contents().Commands().Files().OfferRecovered();
    frame.Contents().OpenFiles(files);
    return environment.Events().RunUntilQuit();
}

}  // namespace
}  // namespace tobbin

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    return tobbin::Run();
}
