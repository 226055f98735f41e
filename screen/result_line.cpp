#include "screen/result_line.h"

namespace screen {

namespace {

/// A sentence that ends in a name, as that of a save does, isn't run into by the next one.
QString Joined(const QString& first, const QString& next) {
    return first.isEmpty() || first.endsWith(u'。') || next.isEmpty() ? first + next : first + u'　' + next;
}

}  // namespace

void ResultLine::Put(const QString& sentence, bool inFront) {
    Control* item = form_.Find(kResultItem);
    if (!item || sentence.isEmpty()) return;
    const QString before = toldInThisGesture_ ? item->Caption() : QString();
    toldInThisGesture_ = true;
    if (before.contains(sentence)) return;
    item->SetCaption(inFront ? Joined(sentence, before) : Joined(before, sentence));
}

void ResultLine::GestureDone(bool inputUnderWay) {
    const bool slotBegun = inputUnderWay && !inputWasUnderWay_;
    inputWasUnderWay_ = inputUnderWay;
    Control* item = form_.Find(kResultItem);
    if (slotBegun && !toldInThisGesture_ && item) item->SetCaption(QString());
    toldInThisGesture_ = false;
}

}  // namespace screen
