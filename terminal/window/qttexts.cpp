#include "window/qttexts.h"

#include <QtCore/QLibraryInfo>

namespace terminal {

std::unique_ptr<QTranslator> chineseQtTexts()
{
    auto texts = std::make_unique<QTranslator>();
    if (!texts->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        texts.reset();
    return texts;
}

} // namespace terminal
