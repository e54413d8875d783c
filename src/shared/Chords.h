// The keys that more than one screen has.
#pragma once

#include <QKeyCombination>

namespace bexlow::shared {

inline constexpr QKeyCombination ServiceChord = Qt::CTRL | Qt::Key_F11;
inline constexpr QKeyCombination DisplayChord = Qt::CTRL | Qt::Key_F12;
inline constexpr QKeyCombination SampleKey = Qt::Key_F5;
inline constexpr QKeyCombination ManualKey = Qt::Key_F1;

}  // namespace bexlow::shared
