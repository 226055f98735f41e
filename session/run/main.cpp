#include "session/run/main.h"

#include "diary/kept_inputs.h"
#include "diary/slot_papers.h"
#include "diary/typed_content.h"
#include "items/calendar.h"
#include "items/display_forms.h"
#include "session/run/command_line.h"
#include "session/run/modules.h"

namespace session {

namespace {

/// One run of the client, from its start to its end.
class Client {
  public:
    explicit Client(const Outside& outside) : modules_(outside, [this] { End(); }) {}
    void Run();

  private:
    bool Start();
    bool LoadTodayAndCompany();
    bool MayRun();
    void TakePrecautions();
    void Refuse(const QString& message);
    void End();

    Modules modules_;
};

void Client::End() {
    modules_.frame.CloseSession();
    modules_.outside.host.EndProgram();
}

void Client::Refuse(const QString& message) {
    modules_.outside.host.Tell(message);
    End();
}

bool Client::LoadTodayAndCompany() {
    const bool loaded = modules_.company.LoadCompanyInformation();
    const items::Ymd today = items::ReadDate(items::DateText(modules_.outside.clock.Now()));
    modules_.context.NewSlotMode = true;
    modules_.context.SlotYear = items::Padded(today.year, 4);
    modules_.context.SlotMonth = items::Padded(today.month, 2);
    modules_.context.SlotDay = items::Padded(today.day, 2);
    modules_.context.SlotDate = modules_.context.SlotYear + modules_.context.SlotMonth + modules_.context.SlotDay;
    modules_.diary.slot.営業活動曜日 = items::WeekdayName(today);
    return loaded;
}

bool Client::MayRun() {
    // The names tell the suite's programs which fields a start of this one takes.
    modules_.permissions.UpdateConditionItems(kMenu, kProgramId,
                                              {"事業所コード", "営業活動日付", "開始時刻", "終了時刻", "担当者コード"});
    return modules_.permissions.EnsureProgramPermission(kMenu, kProgramId, identity::kOperate);
}

bool Client::Start() {
    if (!modules_.frame.OpenSession()) {
        if (!modules_.outside.host.Ended()) Refuse(QStringLiteral("データベースが使用できません。"));
        return false;
    }
    if (!LoadTodayAndCompany()) {
        Refuse(QStringLiteral("ユーザ情報が使用できません。"));
        return false;
    }
    if (!MayRun()) {
        Refuse(QStringLiteral("操作権限がありません。"));
        return false;
    }
    ReadCommandLine(modules_.context, modules_.frame.Tail());
    if (!modules_.context.SlotKeyGiven && modules_.instances.AnotherRuns()) {
        End();
        return false;
    }
    return true;
}

void Client::TakePrecautions() {
    // The users of one database share nothing of what they keep, and a user of two keeps it apart.
    const QString name = platform::PlaceName(modules_.frame.DatabaseName(), modules_.outside.names.login, QString());
    if (!modules_.kept.Open(modules_.outside.stateFolder + "/" + name)) diary::TellKeepingFailed(modules_.diary);
    store::Connection* const main = modules_.context.MainConnection.get();
    if (main && !main->MayWrite(QStringLiteral("T営業活動明細")))
        modules_.diary.result.Tell(QStringLiteral("データベースに書き込めません。登録は保存されません。"));
}

void Client::Run() {
    if (Start()) {
        modules_.outside.host.Show(modules_.diary.form);
        if (!modules_.outside.host.Ended()) modules_.screen.FocusAfterShow();
        if (!modules_.outside.host.Ended()) TakePrecautions();
        if (!modules_.outside.host.Ended()) diary::FinishPapers(modules_.diary);
        if (!modules_.outside.host.Ended()) diary::OfferTyped(modules_.diary);
        modules_.outside.host.Run();
    }
    // Not closed yet, the program was ended by the machine: what was typed lies where the next start finds it.
    modules_.frame.CloseSession();
}

}  // namespace

void Main(const Outside& outside) {
    Client(outside).Run();
}

}  // namespace session
