#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Hands documents to the programs that the desktop has for their kinds.
class DocumentOpener {
  public:
    virtual ~DocumentOpener() = default;
    /// `path` is a file or a folder in the platform's own form; the program works in the document's folder. False when
    /// there is nothing at the path, or no program takes it.
    virtual bool Open(const QString& path) = 0;
};

/// Opens nothing and keeps what it was asked for, in order.
class RecordingOpener : public DocumentOpener {
  public:
    bool Open(const QString& path) override;
    const QStringList& Opened() const { return opened_; }

  private:
    QStringList opened_;
};

}  // namespace platform
