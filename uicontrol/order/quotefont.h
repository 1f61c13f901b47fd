#pragma once

#include <QtGui/QFont>

namespace KV {

/// A text with a font in which it fits its place.
struct QuoteFont
{
    QFont font;
    int width = 0; ///< of the text
    QString text;  ///< "###" in place of a text that is too wide even in the smallest legible font

    static QuoteFont fit(const QString &text, const QFont &font, int room);
};

} // namespace KV
