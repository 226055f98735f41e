#include "diary/masked_item.h"

#include "items/text_rules.h"

namespace diary {

std::optional<QString> ChangedCode(DiaryContext& diary, const char* item, const QString& mask, const QString& field) {
    screen::Control& control = diary.Item(item);
    const QString code = items::FormatToMask(control.Text(), mask);
    if (code != control.Text()) {
        const FillingScope filling(diary.state);
        control.SetText(code);
    }
    return code == field ? std::nullopt : std::optional(code);
}

}  // namespace diary
