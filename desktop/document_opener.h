#pragma once

#include "platform/document_opener.h"

namespace desktop {

/// Opens documents with the programs that the user's desktop has for them. Needs a QApplication.
class DesktopOpener : public platform::DocumentOpener {
  public:
    bool Open(const QString& path) override;
};

}  // namespace desktop
