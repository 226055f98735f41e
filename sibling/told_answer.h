#pragma once

#include <QString>
#include <optional>

namespace sibling {

/// What a stand-in was told to answer without asking anybody.
struct ToldAnswer {
    QString text;
    int delay = 0;  ///< milliseconds before it
    int times = 1;  ///< how often it answers; 0 for one that ends without a word
};

/// What the program was told: by the file NAME.answer beside the program file, or by KATSUDO_SIBLING_ANSWER in its
/// environment, whose whole text is the answer. Nothing when it was told nothing. The file holds lines:
///
///   answer=TEXT        the answer
///   echo=FROM,LENGTH   answers with that part of its tail (from 0) instead
///   delay=N            waits N milliseconds first
///   times=N            answers N times
std::optional<ToldAnswer> ReadToldAnswer(const QString& programFile, const QString& tail);

}  // namespace sibling
