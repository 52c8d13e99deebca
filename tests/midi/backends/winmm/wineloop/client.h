#pragma once

#include <windows.h>
// These need what the line above declares.
#include <mmsystem.h>
// And this what the last one does.
#include <mmddk.h>

namespace wineloop {

/// The program that has a device open, if any.
class Client {
public:
    [[nodiscard]] bool Connected() const { return connected_; }
    /// `flags` hold the kind of callback, as in a driver's open message.
    void Connect(const MIDIOPENDESC& description, DWORD flags);
    void Disconnect() { connected_ = false; }
    /// Calls the program's callback.
    void Notify(UINT message, DWORD_PTR param1 = 0, DWORD_PTR param2 = 0) const;
    /// Whether the calling thread is inside a callback.
    static bool InsideCallback();

private:
    MIDIOPENDESC description_ = {};
    DWORD flags_ = 0;
    bool connected_ = false;
};

} // namespace wineloop
