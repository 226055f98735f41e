#include "screen/result_line.h"

namespace screen {

void ResultLine::Put(const QString& sentence, bool inFront) {
    Control* item = form_.Find(kResultItem);
    if (!item || sentence.isEmpty()) return;
    const QString before = toldInThisGesture_ ? item->Caption() : QString();
    toldInThisGesture_ = true;
    if (before.contains(sentence)) return;
    item->SetCaption(inFront ? sentence + before : before + sentence);
}

void ResultLine::GestureDone(bool inputUnderWay) {
    const bool slotBegun = inputUnderWay && !inputWasUnderWay_;
    inputWasUnderWay_ = inputUnderWay;
    Control* item = form_.Find(kResultItem);
    if (slotBegun && !toldInThisGesture_ && item) item->SetCaption(QString());
    toldInThisGesture_ = false;
}

}  // namespace screen
