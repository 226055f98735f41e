#pragma once

#include <QString>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace setup {

/// Random numbers that are the same on every machine and for every version of the standard library. Every thing that is
/// made up has dice of its own, thrown from the seed and the thing's place, so that it comes out alike whoever asks
/// first.
class Dice {
  public:
    explicit Dice(std::initializer_list<std::uint64_t> place) {
        for (const std::uint64_t part : place) {
            state_ ^= part + 0x9e3779b97f4a7c15ULL;
            Next();
        }
    }

    /// 0 to bound - 1; 0 for a bound below 1.
    int Below(int bound) { return bound < 1 ? 0 : int((Next() >> 11) % std::uint64_t(bound)); }
    /// True that many times in a hundred.
    bool Chance(int percent) { return Below(100) < percent; }

    template <typename List>
    const auto& Pick(const List& list) {
        return list[Below(int(list.size()))];
    }

  private:
    std::uint64_t Next() {
        state_ += 0x9e3779b97f4a7c15ULL;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
        mixed ^= mixed >> 31;
        state_ ^= mixed << 1;
        return mixed;
    }

    std::uint64_t state_ = 0x2545f4914f6cdd1dULL;
};

}  // namespace setup
