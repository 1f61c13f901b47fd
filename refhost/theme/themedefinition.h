#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QJsonObject;

namespace refhost {

/// A font as a theme describes it.
struct ThemeFont
{
    QString family; ///< name of one of the theme's lists of families
    int size = 12;  ///< pixels at 100 %
    bool bold = false;
};

/// An image as a theme describes it: a drawing in one colour, or a plain box with round corners.
struct ThemeImage
{
    QString svg; ///< file name of the drawing; empty for a box
    int radius = 0;
    int width = 16; ///< pixels at 100 %
    int height = 16;
    QString colour; ///< expression of the theme
    QString border; ///< the same, for the line around a box; empty: none
};

/// A theme as its files describe it, by key. A plain value; colours are expressions still (see ThemePalette).
struct ThemeDefinition
{
    QString name;
    QString title; ///< what users read
    QMap<QString, QStringList> families;
    QMap<QString, QString> roles; ///< role to "#RRGGBB"
    QMap<QString, QString> colours;
    QMap<QString, ThemeFont> fonts;
    QMap<QString, int> sizes; ///< pixels at 100 %
    QMap<QString, ThemeImage> images;

    /// Lays what a theme file says over what is here. False, with what is wrong and where in `error`, when the file is
    /// no theme; then this has undefined contents.
    bool overlay(const QByteArray &json, QString &error);
    /// The name of the theme that a file wants to be laid over; empty when it says nothing.
    static QString baseOf(const QByteArray &json);

private:
    bool readFonts(const QJsonObject &object, QString &error);
    bool readImages(const QJsonObject &object, QString &error);
};

} // namespace refhost
