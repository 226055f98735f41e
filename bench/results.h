#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace bench {

/// One measured thing: what it is, and its numbers. A number that wasn't measured is not a number (NaN).
struct Row {
    QStringList what;
    std::vector<double> numbers;
};

/// What was measured of one question.
struct Table {
    QString name;             ///< by which the page finds it: one of those below
    QStringList whatHeads;    ///< of `Row::what`
    QStringList numberHeads;  ///< of `Row::numbers`
    std::vector<Row> rows;

    /// A number of a row by its head; not a number when there is none.
    double At(const Row& row, const QString& head) const;
    /// The row of the same `what`; null when there is none.
    const Row* Find(const QStringList& what) const;
};

/// Heads of the numbers that tables compare: the time of the bare engine, and that of the program.
inline const QString kEngine = QStringLiteral("Engine");
inline const QString kProgram = QStringLiteral("Program");
inline const QString kRows = QStringLiteral("Rows");
/// How many characters a search looks for within a text; 0 where it doesn't.
inline const QString kCharacters = QStringLiteral("Characters");

/// The row of a client that waits for another program: the share of a core that it takes, in per cent.
inline const QString kWaitShare = QStringLiteral("wait for another program, % of a core");

/// Names of the tables.
namespace table {
inline const QString kParties = QStringLiteral("party searches");
inline const QString kOthers = QStringLiteral("other lists");
inline const QString kNumbers = QStringLiteral("number lists");
inline const QString kNames = QStringLiteral("used names");
inline const QString kTyped = QStringLiteral("typed numbers");
inline const QString kOpenings = QStringLiteral("openings");
inline const QString kClient = QStringLiteral("client");
inline const QString kMemory = QStringLiteral("memory");
inline const QString kCrowd = QStringLiteral("crowd");
inline const QString kLike = QStringLiteral("like");
inline const QString kRewriter = QStringLiteral("rewriter");
inline const QString kIndexes = QStringLiteral("cost of indexes");
inline const QString kStoreSizes = QStringLiteral("store sizes");
inline const QString kCompany = QStringLiteral("company");
}  // namespace table

/// What one measurement found on one installation.
struct Results {
    QDateTime when;   ///< it ended
    QString machine;  ///< what it ran on, in words
    double load = 0;  ///< of the machine before: processes that ran or wanted to, over a minute
    std::vector<Table> tables;
    QStringList faults;  ///< what didn't work, in words: then the numbers aren't worth much

    /// Null when that wasn't measured.
    const Table* Find(const QString& name) const;
    void Add(Table table) { tables.push_back(std::move(table)); }
};

/// Results as a file. Writing tells whether that worked; reading gives nothing for a file that is missing or isn't
/// whole.
bool WriteResults(const Results& results, const QString& file);
std::optional<Results> ReadResults(const QString& file);

/// The machine's load over the last minute.
double MachineLoad();

/// Notes the moment, the machine, and the load that it had before. `engine` tells about the engine, in words.
void NoteMachine(Results& results, const QString& engine, double load);

}  // namespace bench
