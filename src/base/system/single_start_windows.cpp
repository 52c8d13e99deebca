#include <new>
#include <span>
#include <string_view>
#include <utility>
#include <windows.h>

#include "base/system/single_start.h"

namespace tracksmith::system {
namespace {

constexpr wchar_t kStartClass[] = L"TracksmithStart";
// Tells the message from those of other programs.
constexpr ULONG_PTR kFiles = 0x54534D46;
// Files are told apart by a zero; so many units at most come from anybody.
constexpr std::size_t kMostUnits = std::size_t{1} << 20;
constexpr UINT kDeliver = WM_APP + 1;
constexpr DWORD kBeginning = 5'000;
constexpr DWORD kStep = 50;
constexpr UINT kAnswer = 5'000;

std::wstring Joined(const std::vector<std::filesystem::path>& files) {
    std::wstring all;
    for (const std::filesystem::path& file : files) {
        std::error_code ignored;
        all += std::filesystem::absolute(file, ignored).native();
        all += L'\0';
    }
    return all;
}

std::vector<std::filesystem::path> Split(std::wstring_view all) {
    std::vector<std::filesystem::path> files;
    for (std::size_t end = all.find(L'\0'); end != std::wstring_view::npos; end = all.find(L'\0')) {
        files.emplace_back(all.substr(0, end));
        all.remove_prefix(end + 1);
    }
    return files;
}

} // namespace

struct SingleStart::Place {
    std::wstring name;
    HANDLE mutex = nullptr;
    bool first = false;
    HWND window = nullptr;
    Handler handler;
    std::vector<std::vector<std::filesystem::path>> received;

    bool Take(const COPYDATASTRUCT& data) {
        if (data.dwData != kFiles || data.cbData % sizeof(wchar_t) != 0 ||
            data.cbData / sizeof(wchar_t) > kMostUnits) {
            return false;
        }
        const auto* text = static_cast<const wchar_t*>(data.lpData);
        received.push_back(Split(text == nullptr
                                     ? std::wstring_view()
                                     : std::wstring_view(text, data.cbData / sizeof(wchar_t))));
        return PostMessageW(window, kDeliver, 0, 0) != 0;
    }

    // The other start must not wait for what the handler does, hence not in Take.
    void Deliver() {
        for (const auto& files : std::exchange(received, {})) {
            handler(files);
        }
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* place = reinterpret_cast<Place*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (place != nullptr && message == WM_COPYDATA) {
            return place->Take(*reinterpret_cast<const COPYDATASTRUCT*>(lParam)) ? TRUE : FALSE;
        }
        if (place != nullptr && message == kDeliver) {
            place->Deliver();
            return 0;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }
};

SingleStart::SingleStart(std::string name) : place_(std::make_unique<Place>()) {
    place_->name.assign(name.begin(), name.end());
    place_->mutex = CreateMutexW(nullptr, FALSE, (LR"(Local\)" + place_->name).c_str());
    place_->first = GetLastError() != ERROR_ALREADY_EXISTS;
}

SingleStart::~SingleStart() {
    if (place_->window != nullptr) {
        DestroyWindow(place_->window);
    }
    if (place_->mutex != nullptr) {
        CloseHandle(place_->mutex);
    }
}

bool SingleStart::First() const {
    return place_->first;
}

bool SingleStart::HandOver(const std::vector<std::filesystem::path>& files) const {
    HWND window = nullptr;
    for (DWORD waited = 0; window == nullptr && waited <= kBeginning; waited += kStep) {
        if (waited > 0) {
            Sleep(kStep);
        }
        window = FindWindowExW(HWND_MESSAGE, nullptr, kStartClass, place_->name.c_str());
    }
    DWORD process = 0;
    if (window == nullptr || GetWindowThreadProcessId(window, &process) == 0) {
        return false;
    }
    // Only who was started by the user may let another program come to the front.
    AllowSetForegroundWindow(process);
    std::wstring all = Joined(files);
    COPYDATASTRUCT data{kFiles, static_cast<DWORD>(all.size() * sizeof(wchar_t)), all.data()};
    DWORD_PTR taken = FALSE;
    const LRESULT sent = SendMessageTimeoutW(
        window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG, kAnswer, &taken);
    return sent != 0 && taken == TRUE;
}

void SingleStart::Receive(Handler handler) {
    place_->handler = std::move(handler);
    if (!place_->first || place_->window != nullptr) {
        return;
    }
    WNDCLASSW description{};
    description.lpfnWndProc = &Place::Procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kStartClass;
    RegisterClassW(&description);
    place_->window = CreateWindowExW(0, kStartClass, place_->name.c_str(), 0, 0, 0, 0, 0,
                                     HWND_MESSAGE, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (place_->window == nullptr) {
        throw std::bad_alloc(); // the system's window handles are used up
    }
    SetWindowLongPtrW(place_->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(place_.get()));
}

} // namespace tracksmith::system
