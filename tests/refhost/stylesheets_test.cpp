#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "theme/themeservice.h"
#include "zb/cstylesheetcenter.h"

using namespace refhost;

namespace {

QStringList complaints;

void listen(QtMsgType, const QMessageLogContext &, const QString &text)
{
    complaints << text;
}

QString sheet(const char *kind)
{
    return ZB::CStyleSheetCenter::getStyle(QLatin1String(kind));
}

} // namespace

TEST(StyleSheets, AreThereForEveryKindAndQtReadsThem)
{
    for (const char *kind :
         {"QMenu",          "QLineEdit", "QToolTip",    "QScrollBar",  "QDialog",      "QPushButton", "QCheckBox",
          "QRadioButton",   "QComboBox", "QListWidget", "QTreeWidget", "QTabBar",      "QMessageBox", "QSpinBox",
          "QPlainTextEdit", "QLabel",    "QMainWindow", "QToolBar",    "QProgressBar", "QHeaderView", "QApplication"}) {
        complaints.clear();
        const QtMessageHandler before = qInstallMessageHandler(listen);
        QWidget widget;
        widget.setStyleSheet(sheet(kind));
        widget.ensurePolished();
        qInstallMessageHandler(before);
        EXPECT_EQ(complaints.join(QLatin1Char('\n')).toStdString(), "") << kind;
        EXPECT_FALSE(sheet(kind).isEmpty()) << kind;
        EXPECT_FALSE(sheet(kind).contains(QLatin1String("{{"))) << kind;
        EXPECT_FALSE(sheet(kind).contains(QLatin1String("rgba(255,0,255"))) << kind; // a missing colour
    }
    EXPECT_EQ(sheet("QUnknown"), QString());
    EXPECT_EQ(sheet("../themes/dark.json"), QString());
}

TEST(StyleSheets, DressAProgramThatAsksForIt)
{
    ThemeService &service = ThemeService::instance();
    service.styleApplication(*qApp);
    QLineEdit line;
    line.ensurePolished();
    EXPECT_EQ(line.palette().color(QPalette::PlaceholderText).name(), QStringLiteral("#9ba5b7"));
    const int height = QPushButton(QStringLiteral("确定")).sizeHint().height();
    service.setTheme(QStringLiteral("light"));
    service.setScale(2);
    EXPECT_TRUE(sheet("QMenu").contains(QLatin1String("rgba(238,241,245,255)")));
    EXPECT_EQ(QApplication::font().pixelSize(), 24);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window).name(), QStringLiteral("#ffffff"));
    EXPECT_NEAR(QPushButton(QStringLiteral("确定")).sizeHint().height(), 2 * height, 4);
    service.setScale(1);
    service.setTheme(QStringLiteral("dark"));
    qApp->setStyleSheet(QString());
}
