#include "app/forms/guide/guide_sections.h"

#include <algorithm>

#include <QWidget>

#include "app/forms/guide/texts.h"

namespace tracksmith::forms {
namespace {

// Without the namespace.
bool IsOfClass(const QWidget& widget, std::string_view name) {
    for (const QMetaObject* each = widget.metaObject(); each != nullptr;
         each = each->superClass()) {
        std::string_view full = each->className();
        full.remove_prefix(std::min(full.size(), full.rfind(':') + 1));
        if (full == name) {
            return true;
        }
    }
    return false;
}

} // namespace

const Text& GuideSectionOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        for (const guide_texts::Section& section : guide_texts::kSections) {
            const auto owner =
                QLatin1String(section.owner.data(), static_cast<qsizetype>(section.owner.size()));
            if (widget->objectName() == owner || IsOfClass(*widget, section.owner)) {
                return section.heading;
            }
        }
    }
    return guide_texts::kSections.front().heading;
}

} // namespace tracksmith::forms
