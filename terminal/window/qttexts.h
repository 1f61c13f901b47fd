#pragma once

#include <QtCore/QTranslator>
#include <memory>

namespace terminal {

/// The Chinese texts of what Qt itself shows (boxes for files, menus of text fields), for installTranslator(). Null
/// where they are not installed: such texts stay English then.
std::unique_ptr<QTranslator> chineseQtTexts();

} // namespace terminal
