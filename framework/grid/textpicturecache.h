#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QImage>
#include <list>

#include "frameworkexport.h"

namespace ZB {

/// Pictures of whole texts, for texts that need shaping and are therefore slow to draw. Bounded: the texts that were
/// not used for longest leave first. GUI thread.
class FRAMEWORK_API TextPictureCache
{
public:
    explicit TextPictureCache(qint64 maximumBytes = 4 * 1024 * 1024);

    /// The text on transparent ground, as high as the font. fontTag stands for the font: the same tag always comes with
    /// the same font, until clear(). Valid until the next call.
    const QImage &picture(const QString &text, const QFont &deviceFont, int fontTag, QRgb color);
    void clear();

    qint64 bytes() const { return used; }
    int count() const { return index.size(); }

private:
    struct Key
    {
        QString text;
        int fontTag;
        QRgb color;
        bool operator==(const Key &other) const
        {
            return fontTag == other.fontTag && color == other.color && text == other.text;
        }
    };
    friend uint qHash(const Key &key, uint seed)
    {
        return qHash(key.text, seed) ^ key.color ^ (static_cast<uint>(key.fontTag) << 24);
    }
    struct Entry
    {
        Key key;
        QImage image;
    };
    using Entries = std::list<Entry>;

    void dropOldest();

    qint64 limit;
    qint64 used = 0;
    Entries entries; ///< used last in front
    QHash<Key, Entries::iterator> index;
};

} // namespace ZB
