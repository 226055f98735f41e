#pragma once

#include "screen/form.h"

namespace screen {

/// The line `結果` at the foot of a form: what became of what the user did. What one gesture brings about stands there
/// together, the outcome of a command first; it stays until the next gesture that has something to tell, or until the
/// next slot is begun by typing.
class ResultLine {
  public:
    /// `form` has, or will have, an item `結果`.
    explicit ResultLine(Form& form) : form_(form) {}

    /// Adds a sentence behind what this gesture told already; one that stands there isn't said twice.
    void Tell(const QString& sentence) { Put(sentence, false); }
    /// The same in front of it: what became of a command.
    void TellOutcome(const QString& sentence) { Put(sentence, true); }

    /// A gesture has been carried out. `inputUnderWay`: there is typed content on the screen that isn't stored.
    void GestureDone(bool inputUnderWay);

  private:
    void Put(const QString& sentence, bool inFront);

    Form& form_;
    bool toldInThisGesture_ = false;
    bool inputWasUnderWay_ = false;
};

/// The name of the item.
inline const QString kResultItem = QStringLiteral("結果");

}  // namespace screen
