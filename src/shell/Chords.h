// The two key chords: Ctrl held alone, with one function key.
#pragma once

#include <QKeyEvent>

namespace bexlow::shell {

inline bool IsChord(const QKeyEvent& key, Qt::Key functionKey) {
  return !key.isAutoRepeat() && key.key() == functionKey &&
         (key.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
}
inline bool IsServiceChord(const QKeyEvent& key) {
  return IsChord(key, Qt::Key_F11);
}
inline bool IsDisplayChord(const QKeyEvent& key) {
  return IsChord(key, Qt::Key_F12);
}

}  // namespace bexlow::shell
