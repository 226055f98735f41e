#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <functional>

namespace plain {

/// Where the choices of a made-up statement come from: a seed, or the bytes of a fuzzer.
class Dice {
  public:
    explicit Dice(quint32 seed) : next_([random = QRandomGenerator(seed)]() mutable { return random.generate(); }) {}
    explicit Dice(std::function<quint32()> next) : next_(std::move(next)) {}

    /// A number from 0 up to `sides` - 1.
    int Of(int sides) { return int(next_() % quint32(sides)); }
    bool OneIn(int sides) { return Of(sides) == 0; }
    template <typename List>
    auto Pick(const List& list) {
        return list[Of(int(list.size()))];
    }

  private:
    std::function<quint32()> next_;
};

}  // namespace plain
