#include "session/run/main.h"

#include "diary/diary_screen.h"
#include "hostsetup/office_trust.h"
#include "items/calendar.h"
#include "items/display_forms.h"
#include "platform/instance_guard.h"
#include "session/run/command_line.h"
#include "session/run/session_frame.h"

namespace session {

namespace {

/// The client put together: every module object once, each given what it uses.
class Client {
  public:
    explicit Client(const Outside& outside);
    void Run();

  private:
    bool Start();
    bool LoadTodayAndCompany();
    bool MayRun();
    void Refuse(const QString& message);
    void End();

    const Outside& outside_;
    platform::InstanceGuard instances_;
    SessionContext context_;
    suite::RunHistory history_{context_, outside_.clock};
    DataAccess data_{context_, history_};
    Environment environment_{context_, data_, history_, outside_.host, outside_.names};
    identity::StaffIdentity staff_{context_, data_, outside_.host};
    identity::PinDialog pinDialog_{context_, data_, staff_, outside_.host, outside_.clock};
    identity::Permissions permissions_{context_, data_, staff_, pinDialog_, outside_.host};
    identity::CompanyLoader company_{context_, data_};
    numbers::NumberSeries series_{context_, data_, outside_.host, outside_.clock};
    numbers::PhoneDirectory phones_{context_, data_, outside_.clock};
    suite::ViewingLog viewingLog_{context_, data_, series_, outside_.clock};
    suite::LinkMessages links_{context_, data_, environment_, staff_, outside_.clock};
    SessionFrame frame_{context_, data_, environment_, history_, links_, staff_, outside_};
    lists::PickState pick_;
    attachments::AttachmentStore attachments_{context_, data_, outside_.clock};
    diary::DiaryContext diary_{context_,     data_,           outside_.host,    outside_.clock, permissions_,
                               company_,     viewingLog_,     phones_,          series_,        pick_,
                               attachments_, outside_.opener, [this] { End(); }};
    diary::DiaryScreen screen_{diary_};
};

Client::Client(const Outside& outside)
    : outside_(outside), instances_(outside.programFolder, outside.names.login, outside.names.computer) {
    environment_.prepareOfficeTrust = [this] {
        // Where there is no registry there is no suite that asks.
        return !outside_.registry ||
               hostsetup::PrepareOfficeTrust(*outside_.registry, context_.UserReportFolder,
                                             [this](const QString& message) { outside_.host.Tell(message); });
    };
}

void Client::End() {
    frame_.CloseSession();
    outside_.host.EndProgram();
}

void Client::Refuse(const QString& message) {
    outside_.host.Tell(message);
    End();
}

bool Client::LoadTodayAndCompany() {
    const bool loaded = company_.LoadCompanyInformation();
    const items::Ymd today = items::ReadDate(items::DateText(outside_.clock.Now()));
    context_.NewSlotMode = true;
    context_.SlotYear = items::Padded(today.year, 4);
    context_.SlotMonth = items::Padded(today.month, 2);
    context_.SlotDay = items::Padded(today.day, 2);
    context_.SlotDate = context_.SlotYear + context_.SlotMonth + context_.SlotDay;
    diary_.slot.営業活動曜日 = items::WeekdayName(today);
    return loaded;
}

bool Client::MayRun() {
    // The names tell the suite's programs which fields a start of this one takes.
    permissions_.UpdateConditionItems(kMenu, kProgramId,
                                      {"事業所コード", "営業活動日付", "開始時刻", "終了時刻", "担当者コード"});
    return permissions_.EnsureProgramPermission(kMenu, kProgramId, identity::kOperate);
}

bool Client::Start() {
    if (!frame_.OpenSession()) {
        if (!outside_.host.Ended()) Refuse(QStringLiteral("データベースが使用できません。"));
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
    ReadCommandLine(context_, frame_.Tail());
    if (!context_.SlotKeyGiven && instances_.AnotherRuns()) {
        End();
        return false;
    }
    return true;
}

void Client::Run() {
    if (!Start()) return;
    outside_.host.Show(diary_.form);
    if (!outside_.host.Ended()) screen_.FocusAfterShow();
    outside_.host.Run();
}

}  // namespace

void Main(const Outside& outside) {
    Client(outside).Run();
}

}  // namespace session
