#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QFont>

#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

/// Which sheets make up that of a kind of widget: its own, and those of what it has inside.
QStringList partsOf(const QString &kind)
{
    const QStringList widgets = {
        QStringLiteral("QWidget"),   QStringLiteral("QDialog"),        QStringLiteral("QPushButton"),
        QStringLiteral("QLineEdit"), QStringLiteral("QPlainTextEdit"), QStringLiteral("QCheckBox"),
        QStringLiteral("QComboBox"), QStringLiteral("QListWidget"),    QStringLiteral("QTabBar"),
        QStringLiteral("QMenu"),     QStringLiteral("QScrollBar"),     QStringLiteral("QProgressBar"),
        QStringLiteral("QToolTip"),
    };
    // A colour in the sheet is that of the placeholder too. A program whose palette follows the theme gets it from
    // there, with a placeholder of its own colour.
    const QString lineText = QStringLiteral("QLineEditText");
    static const QMap<QString, QStringList> composed = {
        {QStringLiteral("QApplication"), widgets + QStringList(QStringLiteral("QMainWindow"))},
        {QStringLiteral("QDialog"), widgets + QStringList(lineText)},
        {QStringLiteral("QMessageBox"), widgets + QStringList(lineText)},
        {QStringLiteral("QLineEdit"), {QStringLiteral("QLineEdit"), lineText}},
        {QStringLiteral("QComboBox"), {QStringLiteral("QComboBox"), QStringLiteral("QScrollBar")}},
        {QStringLiteral("QListWidget"),
         {QStringLiteral("QListWidget"), QStringLiteral("QCheckBox"), QStringLiteral("QScrollBar")}},
        {QStringLiteral("QFramedTree"),
         {QStringLiteral("QListWidget"), QStringLiteral("QScrollBar"), QStringLiteral("QFramedTree")}},
        {QStringLiteral("QPlainTextEdit"), {QStringLiteral("QPlainTextEdit"), QStringLiteral("QScrollBar")}},
    };
    // Kinds that share a sheet.
    static const QMap<QString, QString> same = {
        {QStringLiteral("QRadioButton"), QStringLiteral("QCheckBox")},
        {QStringLiteral("QListView"), QStringLiteral("QListWidget")},
        {QStringLiteral("QTreeView"), QStringLiteral("QListWidget")},
        {QStringLiteral("QTreeWidget"), QStringLiteral("QListWidget")},
        {QStringLiteral("QTableView"), QStringLiteral("QListWidget")},
        {QStringLiteral("QTableWidget"), QStringLiteral("QListWidget")},
        {QStringLiteral("QHeaderView"), QStringLiteral("QListWidget")},
        {QStringLiteral("QSpinBox"), QStringLiteral("QLineEdit")},
        {QStringLiteral("QDoubleSpinBox"), QStringLiteral("QLineEdit")},
        {QStringLiteral("QDateEdit"), QStringLiteral("QLineEdit")},
        {QStringLiteral("QTextEdit"), QStringLiteral("QPlainTextEdit")},
        {QStringLiteral("QTextBrowser"), QStringLiteral("QPlainTextEdit")},
        {QStringLiteral("QTabWidget"), QStringLiteral("QTabBar")},
        {QStringLiteral("QSlider"), QStringLiteral("QProgressBar")},
        {QStringLiteral("QLabel"), QStringLiteral("QWidget")},
        {QStringLiteral("QGroupBox"), QStringLiteral("QWidget")},
        {QStringLiteral("QMenuBar"), QStringLiteral("QMainWindow")},
        {QStringLiteral("QToolBar"), QStringLiteral("QMainWindow")},
        {QStringLiteral("QToolButton"), QStringLiteral("QMainWindow")},
        {QStringLiteral("QStatusBar"), QStringLiteral("QMainWindow")},
    };
    const QString own = same.value(kind, kind);
    return composed.value(own, {own});
}

/// What a word in double braces stands for: a colour by key, a length at 100 %, the family of texts.
QString valueOf(const QString &word)
{
    CUiResource *resource = CUiResource::instance();
    if (word == QLatin1String("family"))
        return resource->getFont(QStringLiteral("fnt_default_normal"))->family();
    if (word.endsWith(QLatin1String("px")))
        return QString::number(scaled(word.chopped(2).toInt())) + QLatin1String("px");
    const QColor colour = *resource->getColor(word);
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(colour.red())
        .arg(colour.green())
        .arg(colour.blue())
        .arg(colour.alpha());
}

QString readSheet(const QString &part)
{
    QFile file(QStringLiteral(":/refhost/styles/%1.qss").arg(part));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(file.readAll());
    QString sheet;
    int at = 0;
    for (;;) {
        const int open = text.indexOf(QLatin1String("{{"), at);
        const int close = open < 0 ? -1 : text.indexOf(QLatin1String("}}"), open);
        if (close < 0)
            return sheet + text.mid(at);
        sheet += text.mid(at, open - at) + valueOf(text.mid(open + 2, close - open - 2));
        at = close + 2;
    }
}

} // namespace

QString CStyleSheetCenter::getStyle(const QString &widgetKind)
{
    CUiResource::instance(); // loads the files
    QString sheet;
    for (const QString &part : partsOf(widgetKind))
        sheet += readSheet(part);
    return sheet;
}

QString CStyleSheetCenter::getStyle(EControlType type)
{
    return type == ControlTree ? getStyle(QStringLiteral("QFramedTree")) : QString();
}

} // namespace ZB
