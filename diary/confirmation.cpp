#include "diary/confirmation.h"

namespace diary {

using screen::ControlKind;

int AskRegister(DiaryContext& diary, const QString& programId, const QString& inputMessage, const QString& content) {
    constexpr int kRed = 192;
    int answer = 2;
    screen::Form dialog(QStringLiteral("msg登録確認"));
    dialog.SetCaption(programId);
    const bool isNew = diary.session.NewSlotMode;
    screen::Control& message = dialog.Add(
        ControlKind::CaptionLabel, QStringLiteral("lab_msg"),
        isNew ? QStringLiteral("登録します。よろしいですか？") : QStringLiteral("修正します。よろしいですか？"));
    if (!isNew) message.foreColor = kRed;
    dialog.Add(ControlKind::CaptionLabel, QStringLiteral("lab_inpmsg"), inputMessage)
        .SetVisible(!inputMessage.isEmpty());
    dialog.Add(ControlKind::CaptionLabel, QStringLiteral("登録内容"), content).SetVisible(!content.isEmpty());
    const auto add = [&](const QString& name, const QString& caption, int value) {
        dialog.Add(ControlKind::SSCommand, name, caption).onClick = [&diary, &dialog, &answer, value] {
            answer = value;
            diary.host.Unload(dialog);
        };
    };
    add(QStringLiteral("btn_登録"), QStringLiteral("はい"), 1);
    add(QStringLiteral("btn_いいえ"), QStringLiteral("いいえ"), 2);
    dialog.At(QStringLiteral("btn_登録")).shortcut = QStringLiteral("Y");
    dialog.At(QStringLiteral("btn_いいえ")).shortcut = QStringLiteral("N");
    dialog.onEscape = [&diary, &dialog] { diary.host.CloseByFrame(dialog); };
    diary.host.ShowModal(dialog);
    return answer;
}

}  // namespace diary
