#pragma once

#include <atomic>
#include <jack/jack.h>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tracksmith::midi::jack {

/// Name of our clients; JACK adds a number when it is taken.
inline constexpr std::string_view kClientName = "Tracksmith";

/// True for a port (full name) that belongs to a client of ours.
bool IsOwnPort(std::string_view portName);

/// A client of a running JACK server, closed with the object. The library mixes up two servers when
/// a client of an ended one is still open while another joins the next; therefore Join first closes
/// all clients as soon as one of them is lost.
class Client {
public:
    /// Joins the running server and never starts one; null when there is none. Takes a few
    /// milliseconds either way, but for ever when the server is stopped. Any thread.
    static std::unique_ptr<Client> Join(const std::string& name);
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    /// Ends all callbacks. Also quick when the server is gone.
    ~Client();

    /// The library's client, for the thread that calls Join, and for callbacks.
    jack_client_t* Handle() const { return handle_; }
    /// True once the server has ended or thrown the client out. Any thread.
    bool Lost() const { return lost_.load(std::memory_order_acquire); }
    /// Calls `use` with the library's client, which stays open meanwhile; false when it is lost or
    /// being closed. Any thread, one at a time; never waits.
    template <typename Use>
    bool With(Use use) {
        const std::unique_lock lock(using_, std::try_to_lock);
        if (!lock || Lost()) {
            return false;
        }
        use(handle_);
        return true;
    }

private:
    /// The clients of this process.
    struct Clients {
        std::mutex mutex;
        std::vector<Client*> clients;
    };

    explicit Client(jack_client_t* handle);
    void Close();
    static Clients& All();
    static void CloseAllWhenOneIsLost();

    std::mutex using_;
    jack_client_t* handle_;
    std::atomic<bool> lost_{false};
};

} // namespace tracksmith::midi::jack
