#include "instruments/importers/import_midnam.h"

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "instruments/importers/import_text.h"
#include "instruments/importers/midnam_device.h"
#include "instruments/importers/row_collector.h"
#include "instruments/importers/texts.h"
#include "instruments/voices/voice_file_error.h"

namespace tracksmith::instruments {
namespace {

// As UTF-8. Latin-1 is the first 256 characters of Unicode, each of the upper half two bytes long.
std::string Utf8Of(const ImportText& text) {
    if (text.encoding == TextEncoding::Utf8) {
        return std::string(text.bytes);
    }
    std::string out;
    out.reserve(text.bytes.size() * 2);
    for (const char c : text.bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            out.push_back(c);
        } else {
            out.push_back(static_cast<char>(0xC0U | (byte >> 6U)));
            out.push_back(static_cast<char>(0x80U | (byte & 0x3FU)));
        }
    }
    return out;
}

void Parse(pugi::xml_document& document, const std::string& text) {
    constexpr unsigned kOptions = pugi::parse_default | pugi::parse_doctype;
    const pugi::xml_parse_result result =
        document.load_buffer(text.data(), text.size(), kOptions, pugi::encoding_utf8);
    if (!result) {
        const auto offset = static_cast<std::size_t>(result.offset);
        throw VoiceFileError(texts::kXmlFault, LineAt(text, offset));
    }
    for (const pugi::xml_node node : document.children()) {
        const std::string_view value = node.value();
        if (node.type() == pugi::node_doctype && value.find("<!ENTITY") != std::string_view::npos) {
            throw VoiceFileError(texts::kXmlEntities);
        }
    }
}

} // namespace

std::vector<ImportedTable> ImportMidnam(std::span<const std::uint8_t> bytes) {
    const std::string text = Utf8Of(ReadImportText(bytes));
    pugi::xml_document document;
    Parse(document, text);
    const pugi::xml_node root = document.child("MIDINameDocument");
    if (!root) {
        throw VoiceFileError(texts::kNotMidnam);
    }
    RowCollector rows;
    for (const pugi::xml_node device : root.children()) {
        CollectMidnamDevice(device, text, rows);
    }
    return rows.Take();
}

} // namespace tracksmith::instruments
