#include <array>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <string_view>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "base/system/descriptor.h"
#include "base/system/message_poster.h"
#include "base/system/single_start.h"

namespace tracksmith::system {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kBeginning{5'000};
constexpr std::chrono::milliseconds kStep{50};
constexpr timeval kAnswer{5, 0};
constexpr char kTaken = '1';
// Files are told apart by a zero; so many bytes at most come from anybody.
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

// In the folder of the login, which the user alone can enter; apart for each screen, since a window
// on another one would not be seen. Empty where the system has no such folder.
fs::path PlaceOf(std::string name) {
    const std::string folder = Variable("XDG_RUNTIME_DIR");
    struct stat about {};
    if (folder.empty() || stat(folder.c_str(), &about) != 0 || about.st_uid != geteuid()) {
        return {};
    }
    for (const char letter : "-" + Variable("WAYLAND_DISPLAY") + Variable("DISPLAY")) {
        name += std::isalnum(static_cast<unsigned char>(letter)) != 0 ? letter : '-';
    }
    return fs::path(folder) / name;
}

std::string Joined(const std::vector<fs::path>& files) {
    std::string all;
    for (const fs::path& file : files) {
        std::error_code ignored;
        all += fs::absolute(file, ignored).native();
        all += '\0';
    }
    return all;
}

std::vector<fs::path> Split(std::string_view all) {
    std::vector<fs::path> files;
    for (std::size_t end = all.find('\0'); end != std::string_view::npos; end = all.find('\0')) {
        files.emplace_back(all.substr(0, end));
        all.remove_prefix(end + 1);
    }
    return files;
}

// A socket with its address; false when the system refuses or the name is too long.
class Socket {
public:
    explicit Socket(const fs::path& place)
        : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        address_.sun_family = AF_UNIX;
        const std::string& name = place.native();
        if (name.empty() || name.size() >= sizeof address_.sun_path) {
            return;
        }
        std::memcpy(address_.sun_path, name.c_str(), name.size() + 1);
        named_ = true;
    }
    bool Bind() const {
        return named_ && bind(socket_.Get(), Address(), sizeof address_) == 0 &&
               listen(socket_.Get(), SOMAXCONN) == 0;
    }
    bool Connect() const {
        return named_ && connect(socket_.Get(), Address(), sizeof address_) == 0;
    }
    int Get() const { return socket_.Get(); }

private:
    const sockaddr* Address() const { return reinterpret_cast<const sockaddr*>(&address_); }

    Descriptor socket_;
    sockaddr_un address_{};
    bool named_ = false;
};

void LimitWaiting(int socket) {
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &kAnswer, sizeof kAnswer);
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &kAnswer, sizeof kAnswer);
}

bool SendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

// Until the other end says that there is no more; false when that does not come or it is too much.
bool ReceiveAll(int socket, std::string& bytes) {
    std::array<char, 4'096> part{};
    ssize_t got = 0;
    while ((got = recv(socket, part.data(), part.size(), 0)) > 0 && bytes.size() <= kMostBytes) {
        bytes.append(part.data(), static_cast<std::size_t>(got));
    }
    return got == 0;
}

} // namespace

struct SingleStart::Place {
    explicit Place(fs::path where)
        : path(std::move(where)),
          lock(path.empty() ? -1
                            : open((path.native() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC,
                                   S_IRUSR | S_IWUSR)),
          // Where nothing can be locked every start goes on by itself.
          first(lock.Get() < 0 || flock(lock.Get(), LOCK_EX | LOCK_NB) == 0) {}

    // The other start does not wait for what the handler does.
    void Deliver() {
        std::vector<std::vector<fs::path>> all;
        {
            const std::lock_guard guard(mutex);
            all.swap(received);
        }
        for (const auto& files : all) {
            handler(files);
        }
    }

    void Take(int caller) {
        LimitWaiting(caller);
        std::string bytes;
        if (!ReceiveAll(caller, bytes)) {
            return;
        }
        {
            const std::lock_guard guard(mutex);
            received.push_back(Split(bytes));
        }
        SendAll(caller, std::string_view(&kTaken, 1));
        poster->Post(0);
    }

    // On a thread of its own until the socket is shut down.
    void Listen() {
        for (;;) {
            const Descriptor caller(accept4(socket->Get(), nullptr, nullptr, SOCK_CLOEXEC));
            if (caller.Get() < 0 && errno != ECONNABORTED && errno != EINTR) {
                return;
            }
            if (caller.Get() >= 0) {
                Take(caller.Get());
            }
        }
    }

    fs::path path;
    Descriptor lock;
    bool first;
    Handler handler;
    std::unique_ptr<Socket> socket;
    std::unique_ptr<MessagePoster> poster;
    std::mutex mutex;
    std::vector<std::vector<fs::path>> received;
    std::thread listener;
};

SingleStart::SingleStart(std::string name)
    : place_(std::make_unique<Place>(PlaceOf(std::move(name)))) {}

SingleStart::~SingleStart() {
    if (place_->listener.joinable()) {
        shutdown(place_->socket->Get(), SHUT_RDWR);
        place_->listener.join();
        unlink(place_->path.c_str());
    }
}

bool SingleStart::First() const {
    return place_->first;
}

bool SingleStart::HandOver(const std::vector<fs::path>& files) const {
    const Socket socket(place_->path);
    auto waited = std::chrono::milliseconds::zero();
    while (!socket.Connect()) {
        if (waited >= kBeginning) {
            return false;
        }
        std::this_thread::sleep_for(kStep);
        waited += kStep;
    }
    LimitWaiting(socket.Get());
    char answer = 0;
    return SendAll(socket.Get(), Joined(files)) && shutdown(socket.Get(), SHUT_WR) == 0 &&
           recv(socket.Get(), &answer, 1, 0) == 1 && answer == kTaken;
}

void SingleStart::Receive(Handler handler) {
    Place& place = *place_;
    place.handler = std::move(handler);
    if (!place.first || place.lock.Get() < 0 || place.listener.joinable()) {
        return;
    }
    unlink(place.path.c_str()); // of a program that was killed
    place.socket = std::make_unique<Socket>(place.path);
    place.poster = std::make_unique<MessagePoster>([&place](std::uint32_t) { place.Deliver(); });
    if (place.socket->Bind()) {
        place.listener = std::thread([&place] { place.Listen(); });
    }
}

} // namespace tracksmith::system
