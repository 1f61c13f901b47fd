#pragma once

#include <QtCore/QChar>

namespace core {

/// Scripts whose letters stand side by side, each in a form and with a width of its own whatever stands beside it:
/// texts of these can be painted and measured letter by letter. Hangul is one only in whole syllables, and not told
/// here.
inline bool isSpacingScript(QChar::Script script)
{
    switch (script) {
    case QChar::Script_Common:
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
        return true;
    default:
        return false;
    }
}

} // namespace core
