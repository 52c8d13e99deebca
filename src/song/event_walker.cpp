#include "song/event_walker.h"

#include <algorithm>
#include <array>

namespace tracksmith::song {

bool BeginsLikeSong(std::span<const std::uint8_t> start) {
    constexpr std::array<std::uint8_t, 4> kName{'M', 'T', 'h', 'd'};
    return start.size() >= kName.size() && std::equal(kName.begin(), kName.end(), start.begin());
}

FileHeader ReadFileHeader(std::span<const std::uint8_t> file) {
    constexpr std::array<std::uint8_t, 4> kLength{0, 0, 0, 6};
    if (file.size() < kHeaderBytes || !BeginsLikeSong(file)) {
        throw ReaderFault{FaultKind::Header1, 0, 0, 0};
    }
    if (!std::equal(kLength.begin(), kLength.end(), file.begin() + 4)) {
        throw ReaderFault{FaultKind::Header2, 4, 0, 0};
    }
    FileHeader header;
    header.trackCount = static_cast<std::uint16_t>((file[10] << 8) | file[11]);
    header.division = static_cast<std::uint16_t>((file[12] << 8) | file[13]);
    header.format = header.trackCount == 1 ? std::uint8_t{0} : file[9];
    if (header.trackCount == 0) {
        throw ReaderFault{FaultKind::NoTracks, 10, 0, 0};
    }
    return header;
}

} // namespace tracksmith::song
