#include "midi/backends/jack/client.h"

#include <algorithm>

namespace tracksmith::midi::jack {

bool IsOwnPort(std::string_view portName) {
    if (!portName.starts_with(kClientName)) {
        return false;
    }
    // "Tracksmith:..." or, when several clients are open, "Tracksmith-01:...".
    portName.remove_prefix(kClientName.size());
    return portName.starts_with(':') || portName.starts_with('-');
}

Client::Clients& Client::All() {
    static Clients all;
    return all;
}

void Client::CloseAllWhenOneIsLost() {
    const std::lock_guard lock(All().mutex);
    const std::vector<Client*>& clients = All().clients;
    const auto lost = [](const Client* client) { return client->Lost(); };
    if (std::none_of(clients.begin(), clients.end(), lost)) {
        return;
    }
    for (Client* client : clients) {
        client->lost_.store(true, std::memory_order_release);
        client->Close();
    }
}

std::unique_ptr<Client> Client::Join(const std::string& name) {
    CloseAllWhenOneIsLost();
    jack_client_t* const handle = jack_client_open(name.c_str(), JackNoStartServer, nullptr);
    return handle == nullptr ? nullptr : std::unique_ptr<Client>(new Client(handle));
}

Client::Client(jack_client_t* handle) : handle_(handle) {
    {
        const std::lock_guard lock(All().mutex);
        All().clients.push_back(this);
    }
    jack_on_shutdown(
        handle_,
        [](void* self) {
            static_cast<Client*>(self)->lost_.store(true, std::memory_order_release);
        },
        this);
}

Client::~Client() {
    {
        const std::lock_guard lock(All().mutex);
        std::erase(All().clients, this);
    }
    Close();
}

void Client::Close() {
    const std::lock_guard lock(using_);
    if (handle_ != nullptr) {
        jack_client_close(handle_);
        handle_ = nullptr;
    }
}

} // namespace tracksmith::midi::jack
