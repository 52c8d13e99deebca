#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <set>

namespace tracksmith::player {

inline constexpr std::size_t kChannels = 16;

/// Where a source channel goes: index of a port, and channel there (0-15).
struct ChannelRoute {
    std::size_t port = 0;
    std::uint8_t target = 0;
    friend bool operator==(const ChannelRoute&, const ChannelRoute&) = default;
};
/// The routes of all source channels.
using ChannelRoutes = std::array<ChannelRoute, kChannels>;

/// Where the events of each source channel (0-15) go, and which channels are heard. The owner's
/// thread writes, both threads read.
class Routing {
public:
    Routing();

    std::size_t Port(std::size_t channel) const { return routes_[channel].port.load(kRelaxed); }
    std::uint8_t Target(std::size_t channel) const {
        return routes_[channel].target.load(kRelaxed);
    }
    void SetRoute(std::size_t channel, const ChannelRoute& route);
    ChannelRoutes Routes() const;
    /// The ports that some channel goes to.
    std::set<std::size_t> Ports() const;

    bool Muted(std::size_t channel) const { return (muted_.load(kRelaxed) & Bit(channel)) != 0; }
    bool Solo(std::size_t channel) const { return (solo_.load(kRelaxed) & Bit(channel)) != 0; }
    void SetMuted(std::size_t channel, bool on) { Set(muted_, channel, on); }
    void SetSolo(std::size_t channel, bool on) { Set(solo_, channel, on); }
    /// Not muted, and solo wherever some channel is.
    bool Audible(std::size_t channel) const;

private:
    static constexpr auto kRelaxed = std::memory_order_relaxed;

    struct Route {
        std::atomic<std::size_t> port = 0;
        std::atomic<std::uint8_t> target = 0;
    };
    static unsigned Bit(std::size_t channel) { return 1U << channel; }
    static void Set(std::atomic<unsigned>& mask, std::size_t channel, bool on) {
        on ? mask.fetch_or(Bit(channel)) : mask.fetch_and(~Bit(channel));
    }

    std::array<Route, kChannels> routes_;
    std::atomic<unsigned> muted_ = 0;
    std::atomic<unsigned> solo_ = 0;
};

} // namespace tracksmith::player
