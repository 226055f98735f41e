#include "bench/page/page_writer.h"

#include <QHash>
#include <algorithm>
#include <cmath>

#include "bench/limits.h"
#include "bench/markdown.h"

namespace bench {
namespace {

/// The results on one engine, as tables are written of them.
struct Engine {
    QString title;
    const ResultsBySize& results;
    bool onServer;

    QStringList Sizes() const {
        QStringList sizes;
        for (const auto& [parties, unused] : results)
            sizes << CountText(parties);
        return sizes;
    }
    std::vector<const Table*> Tables(const QString& name) const {
        std::vector<const Table*> tables;
        for (const auto& [unused, one] : results)
            tables.push_back(one.Find(name));
        return tables;
    }
    bool Has(const QString& name) const {
        const auto tables = Tables(name);
        return std::any_of(tables.begin(), tables.end(), [](const Table* table) { return table; });
    }
};

std::vector<Engine> Engines(const PageMatter& matter) {
    std::vector<Engine> engines;
    if (!matter.files.empty()) engines.push_back({"SQLite, a file", matter.files, false});
    if (!matter.servers.empty()) engines.push_back({"PostgreSQL", matter.servers, true});
    return engines;
}

QString Compared(const PageMatter& matter, const QString& name) {
    QString text;
    for (const Engine& engine : Engines(matter))
        if (engine.Has(name))
            text += "\n**" + engine.title + "**\n\n" + SideBySide(engine.Sizes(), engine.Tables(name));
    return text.isEmpty() ? QString("Not measured.\n") : text.mid(1);
}

/// A table that was made for one size alone.
QString Alone(const PageMatter& matter, const QString& name) {
    for (const Engine& engine : Engines(matter))
        for (auto one = engine.results.rbegin(); one != engine.results.rend(); ++one)
            if (const Table* table = one->second.Find(name))
                return "Of " + CountText(one->first) + " parties:\n\n" + PlainTable(*table);
    return "Not measured.\n";
}

QString Machines(const PageMatter& matter) {
    MarkdownTable text({"Engine", "Machine", "Measured", "Load of the machine before"}, 4);
    for (const Engine& engine : Engines(matter)) {
        QStringList machines;
        QDateTime first, last;
        double least = 0, most = 0;
        for (const auto& [unused, one] : engine.results) {
            if (!machines.contains(one.machine)) machines << one.machine;
            first = first.isValid() ? std::min(first, one.when) : one.when;
            last = last.isValid() ? std::max(last, one.when) : one.when;
            least = most == 0 ? one.load : std::min(least, one.load);
            most = std::max(most, one.load);
        }
        const auto day = [](const QDateTime& when) { return when.date().toString(Qt::ISODate); };
        text.Add({engine.title, machines.join("; "), day(first) + (day(first) == day(last) ? "" : " to " + day(last)),
                  MeasureText(least) + " to " + MeasureText(most)});
    }
    return text.Text();
}

/// The dearest row of a table; null for none.
const Row* Dearest(const Table* table) {
    const Row* dearest = nullptr;
    if (!table) return dearest;
    for (const Row& row : table->rows)
        if (!dearest || table->At(row, kProgram) > table->At(*dearest, kProgram)) dearest = &row;
    return dearest;
}

QString Glance(const PageMatter& matter) {
    const std::vector<std::pair<QString, QString>> questions = {
        {table::kTyped, "a typed document number"},     {table::kOpenings, "the opening of a number list"},
        {table::kParties, "a search of parties"},       {table::kOthers, "a search of another small list"},
        {table::kNumbers, "a search of a number list"}, {table::kNames, "a search of used names"}};
    QString text;
    for (const Engine& engine : Engines(matter)) {
        MarkdownTable lines(
            QStringList{"Slowest, ms", "Which, at the biggest"} + engine.Sizes() + QStringList{"Growth"}, 2);
        for (const auto& [name, what] : questions) {
            QStringList cells;
            std::vector<double> costs;
            const Row* row = nullptr;
            for (const Table* table : engine.Tables(name)) {
                row = Dearest(table);
                costs.push_back(row ? table->At(*row, kProgram) : std::nan(""));
                cells << MeasureText(costs.back());
            }
            const QString which = row ? row->what.join(", ") : kUnmeasured;
            lines.Add(QStringList{what, which} + cells + QStringList{TimesText(costs.back(), costs.front())});
        }
        text += "\n**" + engine.title + "**\n\n" + lines.Text();
    }
    return text.mid(1);
}

/// What a limit says of all companies: how many times it was looked at, and what passes it.
struct Verdict {
    int looked = 0, passed = 0;
    double nearest = 0;  ///< the biggest share of what is allowed
    QString words;       ///< a line for each company that has something to tell
};

Verdict JudgeAll(const PageMatter& matter, const Limit& limit) {
    Verdict verdict;
    for (const Engine& engine : Engines(matter))
        for (const auto& [parties, results] : engine.results) {
            QStringList passed;
            for (const Judged& judged : Judge(limit, results, engine.onServer)) {
                ++verdict.looked;
                verdict.nearest = std::max(verdict.nearest, judged.measured / judged.most);
                if (judged.Passes())
                    passed << judged.what + " " + MeasureText(judged.measured) + " of " + MeasureText(judged.most);
            }
            verdict.passed += int(passed.size());
            if (!passed.isEmpty())
                verdict.words +=
                    "- " + engine.title + ", " + CountText(parties) + " parties: " + passed.join("; ") + "\n";
        }
    return verdict;
}

QString LimitsMet(const PageMatter& matter) {
    MarkdownTable text({"Limit", "Looked at", "Passed by", "Most of it that was taken, %"}, 1);
    QString passed;
    for (const Limit& limit : Limits()) {
        const Verdict verdict = JudgeAll(matter, limit);
        text.Add({limit.text, CountText(verdict.looked), CountText(verdict.passed),
                  verdict.looked == 0 ? kUnmeasured : CountText(verdict.nearest * 100)});
        if (verdict.passed > 0)
            passed += "\n" + limit.text + ". Passed by (what was taken, of what is allowed):\n\n" + verdict.words;
    }
    return text.Text() + (passed.isEmpty() ? QString("\nNothing passes its limit.\n") : passed);
}

QString Faults(const PageMatter& matter) {
    QString text;
    for (const Engine& engine : Engines(matter))
        for (const auto& [parties, results] : engine.results)
            for (const QString& fault : results.faults)
                text += "- " + engine.title + ", " + CountText(parties) + " parties: " + fault + "\n";
    return text.isEmpty() ? QString("Everything was found, stored and shown as it should be.\n") : text;
}

/// The text that stands for a line {{words}}; nothing for unknown words.
std::optional<QString> Replacement(const QString& words, const PageMatter& matter) {
    if (words == "machines") return Machines(matter);
    if (words == "glance") return Glance(matter);
    if (words == "limits") return LimitsMet(matter);
    if (words == "faults") return Faults(matter);
    static const QStringList tables = {table::kParties,  table::kOthers, table::kNumbers, table::kNames,
                                       table::kTyped,    table::kClient, table::kMemory,  table::kCrowd,
                                       table::kOpenings, table::kCompany};
    static const QStringList alone = {table::kLike, table::kRewriter, table::kIndexes, table::kStoreSizes};
    if (tables.contains(words)) return Compared(matter, words);
    if (alone.contains(words)) return Alone(matter, words);
    return std::nullopt;
}

}  // namespace

QString WritePage(const QString& text, const PageMatter& matter, QString& fault) {
    QString page;
    for (const QString& line : text.trimmed().split(u'\n')) {
        if (!line.startsWith("{{") || !line.endsWith("}}")) {
            page += line + "\n";
            continue;
        }
        const auto put = Replacement(line.mid(2).chopped(2), matter);
        if (!put) fault = "The page's text asks for what there isn't: " + line;
        page += put.value_or(line + "\n");
    }
    return page;
}

}  // namespace bench
