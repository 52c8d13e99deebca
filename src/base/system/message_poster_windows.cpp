#include <array>
#include <atomic>
#include <new>
#include <utility>
#include <windows.h>

#include "base/system/message_poster.h"

namespace tracksmith::system {
namespace {

constexpr std::uint32_t kMessageLimit = 4096;
/// The system's own messages end here; numbers below would be taken for them.
constexpr std::uint32_t kFirstFree = 0x3A0;
constexpr wchar_t kPosterClass[] = L"TracksmithMessages";

UINT WindowMessage(std::uint32_t message) {
    return message < kFirstFree ? WM_APP + message : message;
}

/// The number that was posted; kMessageLimit for a message of the system's own.
std::uint32_t PostedMessage(UINT windowMessage) {
    if (windowMessage >= WM_APP && windowMessage < WM_APP + kFirstFree) {
        return windowMessage - WM_APP;
    }
    return windowMessage >= kFirstFree ? windowMessage : kMessageLimit;
}

/// What a window reaches through its user data.
struct Inbox {
    std::shared_ptr<const MessagePoster::Handler> handler;
    std::array<std::atomic<bool>, kMessageLimit> waiting{};
};

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_QUERYENDSESSION) {
        return 1;
    }
    auto* inbox = reinterpret_cast<Inbox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    const std::uint32_t posted = PostedMessage(message);
    if (inbox != nullptr && posted < kMessageLimit && inbox->waiting[posted].exchange(false)) {
        // The handler may destroy the poster that it belongs to
        const auto handler = inbox->handler;
        (*handler)(posted);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateHiddenWindow() {
    static const ATOM windowClass = [] {
        WNDCLASSW description{};
        description.lpfnWndProc = &WindowProcedure;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = kPosterClass;
        return RegisterClassW(&description);
    }();
    HWND window = windowClass == 0
                      ? nullptr
                      : CreateWindowExW(0, kPosterClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr) {
        // The system's window handles are used up
        throw std::bad_alloc();
    }
    return window;
}

} // namespace

struct MessagePoster::Window : Inbox {
    HWND window = nullptr;
};

MessagePoster::MessagePoster(Handler handler) : window_(std::make_unique<Window>()) {
    window_->handler = std::make_shared<const Handler>(std::move(handler));
    window_->window = CreateHiddenWindow();
    Inbox* inbox = window_.get();
    SetWindowLongPtrW(window_->window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(inbox));
}

MessagePoster::~MessagePoster() {
    DestroyWindow(window_->window);
}

void MessagePoster::Post(std::uint32_t message) noexcept {
    std::atomic<bool>& waiting = window_->waiting[message];
    if (!waiting.exchange(true) &&
        PostMessageW(window_->window, WindowMessage(message), 0, 0) == 0) {
        waiting = false;
    }
}

void DispatchMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            // For the program's own message loop
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void SetMessageWakeUp(std::function<void()> /*wakeUp*/) {}

} // namespace tracksmith::system
