#pragma once

#include <QDateTime>
#include <QString>
#include <memory>

#include "bench/recording_connection.h"

namespace bench {

/// Documents of one kind that a slot can be linked to by typing their numbers.
struct TypedNumbers {
    QString kind;
    QString site;  ///< of the session
    QDate day;     ///< of the slot: one in the period that the numbers were given in
    QStringList numbers;
};

/// Documents that slots point at already, for each kind as many as that. The numbers of a kind share site and period.
std::vector<TypedNumbers> NumbersToType(store::Connection& store, int count);

/// The drawn main screen, as the client puts it together, on a slot that is new.
class Desk {
  public:
    /// `root` is the install tree, `now` the day on which the screen believes to be.
    Desk(const QString& root, const QDateTime& now);
    ~Desk();

    /// What keeps the screen from being used, in words; empty for nothing.
    QString Problem() const;

    /// An empty slot on which numbers of that site and day can be typed.
    void BeginSlot(const TypedNumbers& numbers);

    /// Types a number without leaving the item.
    void Type(const QString& kind, const QString& number);
    /// Leaves the item, and returns when the slot with its document is painted.
    void Leave();

    /// True when the slot holds that document.
    bool Holds(const QString& kind, const QString& number) const;

    /// The connection behind the screen; null with a problem.
    RecordingConnection* Connection();

    /// Staff code under which the screen's looks are noted, so that they can be told from others.
    static const QString kViewer;

  private:
    struct Furniture;
    std::unique_ptr<Furniture> furniture_;
};

}  // namespace bench
