// Stands in for any other program of the suite, under whose name it lies in the program folder: it shows what it was
// started with and answers with what is typed.
#include <QApplication>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>
#include <cstdio>
#include <memory>

#include "sibling/sibling_run.h"
#include "sibling/told_answer.h"

namespace {

/// Shows the window and gives the answer that was typed; closing the window answers with nothing.
QString AskUser(const sibling::SiblingRun& run) {
    QDialog window;
    window.setWindowTitle(run.Program());
    auto* layout = new QFormLayout(&window);
    auto* tail = new QLineEdit(run.Tail());
    tail->setReadOnly(true);
    tail->setMinimumWidth(520);
    auto* answer = new QLineEdit;
    auto* end = new QPushButton(QStringLiteral("回答して終了"));
    layout->addRow(QStringLiteral("呼出元"),
                   new QLabel(run.Caller().isEmpty() ? QStringLiteral("なし") : run.Caller()));
    layout->addRow(QStringLiteral("起動情報"), tail);
    layout->addRow(QStringLiteral("回答"), answer);
    layout->addRow(end);
    answer->setFocus();
    QObject::connect(end, &QPushButton::clicked, &window, &QDialog::accept);
    return window.exec() == QDialog::Accepted ? answer->text() : QString();
}

void AnswerAsTold(sibling::SiblingRun& run, const sibling::ToldAnswer& told) {
    QThread::msleep(static_cast<unsigned long>(told.delay));
    for (int time = 0; time < told.times; ++time)
        run.Answer(told.text);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && qstrcmp(argv[1], "--version") == 0) {
        std::puts("katsudo-sibling " KATSUDO_VERSION);
        return 0;
    }
    const QString program = QString::fromLocal8Bit(argv[0]);
    const QString tail = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const auto told = sibling::ReadToldAnswer(program, tail);
    // Who was told what to say needs no display.
    const std::unique_ptr<QCoreApplication> application =
        told ? std::make_unique<QCoreApplication>(argc, argv)
             : std::unique_ptr<QCoreApplication>(new QApplication(argc, argv));
    sibling::SiblingRun run(program, tail, platform::ReadMachineNames());
    if (!run.Open()) return 1;
    if (told)
        AnswerAsTold(run, *told);
    else
        run.Answer(AskUser(run));
    return 0;
}
