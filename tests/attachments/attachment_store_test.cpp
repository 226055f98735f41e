#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "attachments/copy_dialog.h"
#include "attachments/paper_carrier.h"
#include "screen/user_input.h"
#include "setup/create_tree.h"

using attachments::AttachmentStore;
using attachments::Carry;
using attachments::Outcome;
using platform::FileFault;

namespace {

const QString kProgram = session::kProgramId;
const QString kOld = QStringLiteral("202611201000103000001");
const QString kNew = QStringLiteral("202611271000103000001");

class NoLog : public session::StatementLog {
  public:
    void WriteOutputHistory(const QString&) override {}
    void WriteErrorHistory(const QString&) override {}
};

/// A host whose user presses the button of whatever dialog comes up, as soon as events are let through.
class ImpatientHost : public screen::ScreenHost {
  public:
    QSize DisplaySize() const override { return {1920, 1080}; }
    void ProcessEvents() override {
        if (!Front() || Front()->Name() != QStringLiteral("msgコピー中")) return;
        behindTookInput = behindTookInput || main.Enabled();
        seen = Front()->At(QStringLiteral("lab_進捗")).Caption();
        if (presses) screen::UserClick(Front()->At(QStringLiteral("btn_中止")));
    }
    void Sleep(int) override {}

    screen::Form main{QStringLiteral("frm見本")};
    bool presses = true;
    bool behindTookInput = false;
    QString seen;

  protected:
    void WaitUntil(const std::function<bool()>&) override {}
};

class Attachments : public testing::Test {
  protected:
    void SetUp() override {
        setup::CreateOrder order;
        order.tree.root = folder.filePath("office");
        ASSERT_EQ(setup::CreateTree(order), QString());
        store::Fault fault;
        context.MainConnection =
            store::OpenConnection("Provider=SQLite;Data Source=data/gnrdb.accdb;", order.tree.root, fault);
        ASSERT_TRUE(context.MainConnection) << qPrintable(fault.description);
        context.InstallRoot = order.tree.root;
        ASSERT_TRUE(place.Open(folder.filePath("state")));
        context.Company.ドキュメントフォルダ = "documents";
        Write("案/見積.txt", "見積");
        Write("案/図面/平面.txt", "平面");
    }
    QString At(const QString& path) const { return folder.filePath(path); }
    void Write(const QString& path, const QByteArray& content, qint64 size = -1) const {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(At(path)).path()));
        QFile file(At(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        if (size >= 0) file.resize(size);
    }
    Outcome Add(const QString& identity, const QString& source, const platform::CopyProgress& progress = {}) {
        return papers.AddAttachment(kProgram, identity, source, {{"タイトル", "o'clock"}, {"伝票No", "00000007"}},
                                    progress);
    }
    Outcome CarryOver(Carry::Kind kind, const platform::CopyProgress& progress = {}) {
        auto carry = carrier.Plan(kind, kProgram, kOld, kNew);
        if (!carry || !carrier.WriteDown(*carry)) return {false};
        return carrier.CarryOut(*carry, progress);
    }
    /// Rows as "identity/number=document", then the names in the document folder.
    std::string All() {
        std::unique_ptr<store::Recordset> row;
        QStringList all;
        data.OpenMainRecordset(row, "SELECT * FROM M付属書類 ORDER BY 情報識別ID, SEQNo");
        for (; !row->Eof(); row->MoveNext())
            all << Short(*row->Value("情報識別ID")) + "/" + *row->Value("SEQNo") + "=" +
                       row->Value("書類名")->section(u'/', -1);
        for (const QString& name :
             QDir(papers.DocumentFolder())
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
            all << Short(name);
        return all.join(u' ').toStdString();
    }
    static QString Short(QString text) { return text.replace(kOld, "old").replace(kNew, "new").remove("活動手帳_"); }

    QTemporaryDir folder;
    session::SessionContext context;
    NoLog log;
    session::DataAccess data{context, log};
    platform::FixedClock clock{QDateTime(QDate(2026, 11, 20), QTime(10, 5))};
    AttachmentStore papers{context, data, clock};
    platform::KeptFiles place;
    attachments::PaperCarrier carrier{papers, place};
};

TEST_F(Attachments, FollowAMovedSlotWithTheirCopies) {
    Add(kOld, At("案/見積.txt"));
    Add(kOld, At("案/図面"));
    Add(kOld, "名前だけ.txt");
    Add(kOld + "9", At("案/見積.txt"));
    const Outcome outcome = CarryOver(Carry::Kind::Move);
    EXPECT_EQ(OutcomeNotice(outcome), QString());
    EXPECT_EQ(All(),
              "old9/001=見積.txt new/001=見積.txt new/002=図面 new/003=名前だけ.txt "
              "old9_001_見積.txt new_001_見積.txt new_002_図面");
    EXPECT_TRUE(QFile::exists(papers.DocumentFolder() + "/活動手帳_" + kNew + "_002_図面/平面.txt"));
}

TEST_F(Attachments, AreNumberedBehindThoseOfADeletedSlot) {
    Add(kOld, At("案/見積.txt"));
    Add(kOld, At("案/図面"));
    Add(kNew, At("案/見積.txt"));
    // A copy whose row went counts as well.
    Write("office/documents/活動手帳_" + kNew + "_004_見積.txt", "stray");
    EXPECT_EQ(OutcomeNotice(CarryOver(Carry::Kind::Copy)), QString());
    EXPECT_EQ(OutcomeNotice(CarryOver(Carry::Kind::Move)), QString());
    EXPECT_EQ(All(),
              "new/001=見積.txt new/005=見積.txt new/006=図面 new/007=見積.txt new/008=図面 new_001_見積.txt "
              "new_004_見積.txt new_005_見積.txt new_006_図面 new_007_見積.txt new_008_図面");
    EXPECT_EQ(platform::LookAt(papers.DocumentFolder() + "/活動手帳_" + kNew + "_004_見積.txt").bytes, 5);
    EXPECT_TRUE(carrier.Unfinished().empty());
}

// Wherever a run ended, the next one comes to the same end; while the folder is away the note waits.
TEST_F(Attachments, BrokenOffAnywhereAreBroughtToTheEndByTheNextRun) {
    for (const Carry::Kind kind : {Carry::Kind::Move, Carry::Kind::Copy})
        for (int done = 0; done < 3; ++done) {
            ASSERT_TRUE(data.ExecuteMain("DELETE FROM M付属書類"));
            QDir(papers.DocumentFolder()).removeRecursively();
            ASSERT_TRUE(QDir().mkpath(papers.DocumentFolder()));
            Add(kOld, At("案/見積.txt"));
            Add(kOld, At("案/図面"));
            Add(kNew, "名前だけ.txt");
            {
                platform::KeptFiles itsPlace;
                ASSERT_TRUE(itsPlace.Open(folder.filePath("state")));
                attachments::PaperCarrier killed(papers, itsPlace);
                auto carry = killed.Plan(kind, kProgram, kOld, kNew);
                ASSERT_TRUE(carry && killed.WriteDown(*carry));
                EXPECT_EQ(QFile::permissions(carry->file) & (QFile::ReadGroup | QFile::ReadOther), 0);
                EXPECT_TRUE(carrier.Unfinished().empty()) << "it lives";
                const auto first = papers.ReadUntold(kProgram, kOld)->front();
                if (done > 0 && carry->IsMove()) papers.RekeyAttachment(first, kNew, "002");
                if (done > 0 && !carry->IsMove()) papers.CopyRow(first, kNew, "002");
                const QString from = papers.AttachmentFileName(first);
                const QString to = papers.AttachmentFileName({kProgram, kNew, "002", first.documentName, {}});
                if (done > 1 && carry->IsMove()) platform::MoveWhole(from, to);
                if (done > 1 && !carry->IsMove()) platform::CopyWhole(from, to);
            }
            context.Company.ドキュメントフォルダ = "away";
            auto left = carrier.Unfinished();
            ASSERT_EQ(left.size(), 1u);
            EXPECT_EQ(carrier.CarryOut(left.front(), {}).files.fault, FileFault::NoFolder);
            context.Company.ドキュメントフォルダ = "documents";
            left = carrier.Unfinished();
            ASSERT_EQ(left.size(), 1u);
            EXPECT_EQ(OutcomeNotice(carrier.CarryOut(left.front(), {})), QString());
            const std::string there =
                "new/001=名前だけ.txt new/002=見積.txt new/003=図面 new_002_見積.txt new_003_図面";
            EXPECT_EQ(All(), kind == Carry::Kind::Move
                                 ? there
                                 : "old/001=見積.txt old/002=図面 new/001=名前だけ.txt new/002=見積.txt new/003=図面 "
                                   "old_001_見積.txt old_002_図面 new_002_見積.txt new_003_図面")
                << done;
            EXPECT_TRUE(carrier.Unfinished().empty());
        }
}

TEST_F(Attachments, AreCopiedColumnForColumnByAnAdd) {
    Add(kOld, At("案/見積.txt"));
    Add(kOld, At("案/図面"));
    Add(kOld, "名前だけ.txt");
    ASSERT_TRUE(
        data.ExecuteMain("UPDATE M付属書類 SET 対象金額 = '1234567890', 商品コード = NULL WHERE SEQNo = '002'"));
    clock.Set(QDateTime(QDate(2026, 11, 25), QTime(9, 0)));
    EXPECT_EQ(OutcomeNotice(CarryOver(Carry::Kind::Copy)), QString());
    EXPECT_EQ(All(),
              "old/001=見積.txt old/002=図面 old/003=名前だけ.txt new/001=見積.txt new/002=図面 new/003=名前だけ.txt "
              "old_001_見積.txt old_002_図面 new_001_見積.txt new_002_図面");
    std::unique_ptr<store::Recordset> row;
    ASSERT_TRUE(
        data.OpenMainRecordset(row, "SELECT * FROM M付属書類 WHERE 情報識別ID = '" + kNew + "' AND SEQNo = '002'"));
    EXPECT_EQ(row->Value("タイトル"), "o'clock");
    EXPECT_EQ(row->Value("伝票No"), "00000007");
    EXPECT_EQ(row->Value("対象金額"), "1234567890");
    EXPECT_EQ(row->Value("登録日付"), "20261120 100500");
}

TEST_F(Attachments, OfACopyThatIsBrokenOffLeaveNothing) {
    Write("案/映像.mp4", "head", 64 << 20);
    Add(kOld, At("案/見積.txt"));
    const std::string before = All();
    ImpatientHost host;
    host.Show(host.main);
    {
        attachments::CopyDialog dialog(host, &host.main);
        EXPECT_EQ(Add(kOld, At("案/映像.mp4"), dialog.Progress()).files.fault, FileFault::Cancelled);
        EXPECT_EQ(host.Front()->Caption(), "活動手帳");
    }
    EXPECT_EQ(host.seen.toStdString(), "0KB / 65,536KB（0%）");
    EXPECT_EQ(All(), before);
    EXPECT_FALSE(host.behindTookInput);
    EXPECT_TRUE(host.main.Enabled());
    EXPECT_EQ(host.Front(), &host.main);

    // Left alone it goes to its end; a copy of both is then broken off at the second.
    host.presses = false;
    {
        attachments::CopyDialog dialog(host, &host.main);
        EXPECT_EQ(Add(kOld, At("案/映像.mp4"), dialog.Progress()).files.fault, FileFault::None);
    }
    EXPECT_EQ(host.seen.toStdString(), "65,536KB / 65,536KB（100%）");
    host.presses = true;
    attachments::CopyDialog dialog(host, &host.main);
    EXPECT_EQ(CarryOver(Carry::Kind::Copy, dialog.Progress()).files.fault, FileFault::Cancelled);
    EXPECT_EQ(All(),
              "old/001=見積.txt old/002=映像.mp4 new/001=見積.txt old_001_見積.txt old_002_映像.mp4 new_001_見積.txt");
}

}  // namespace
