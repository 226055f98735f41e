#pragma once

#include "screen/form.h"

namespace screen {

/// Tells the form at the end of a gesture that it was carried out.
class Gesture {
  public:
    explicit Gesture(Form& form) : form_(form) { ++form_.gesturesUnderWay; }
    ~Gesture() {
        --form_.gesturesUnderWay;
        if (form_.onUserActed) form_.onUserActed();
    }
    Gesture(const Gesture&) = delete;
    Gesture& operator=(const Gesture&) = delete;

  private:
    Form& form_;
};

}  // namespace screen
