#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtCore/QPluginLoader>
#include <QtTest/QTest>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiTools/QUiLoader>

#include "clogform.h"
#include "corderforms.h"
#include "ctableform.h"
#include "model/chpfdatamodel.h"
#include "order/cautobutton.h"
#include "order/coptypebutton.h"
#include "services/userconfig.h"
#include "table/chpfdatatable.h"
#include "zb/ceventwidgett.h"

namespace {

const QString pluginPath = QStringLiteral(DESIGNER_PLUGIN);

class DesignerTest : public ::testing::Test
{
protected:
    void SetUp() override { refhost::setUserConfig(std::make_unique<refhost::UserConfig>()); }
    void TearDown() override { refhost::setUserConfig(nullptr); }
};

QList<QDesignerCustomWidgetInterface *> controls()
{
    QPluginLoader loader(pluginPath);
    const auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    EXPECT_NE(collection, nullptr) << loader.errorString().toStdString();
    return collection ? collection->customWidgets() : QList<QDesignerCustomWidgetInterface *>();
}

} // namespace

TEST_F(DesignerTest, EveryControlOfTheBoxShowsWithItsFirstProperties)
{
    QUiLoader loader;
    loader.addPluginPath(QFileInfo(pluginPath).path());
    std::string names;
    for (QDesignerCustomWidgetInterface *control : controls()) {
        names += control->name().toStdString() + ' ';
        ASSERT_TRUE(loader.availableWidgets().contains(control->name())) << control->name().toStdString();
        QByteArray form = control->domXml().toUtf8();
        QBuffer buffer(&form);
        const std::unique_ptr<QWidget> widget(loader.load(&buffer));
        ASSERT_NE(widget, nullptr) << control->name().toStdString() << ": " << loader.errorString().toStdString();
        EXPECT_EQ(widget->metaObject()->className(), control->name());
        widget->show();
        QCoreApplication::processEvents();
        EXPECT_FALSE(widget->grab().isNull());
    }
    EXPECT_EQ(names, "KV::CTableForm KV::CLogForm KV::CLadderForm KV::COperationForm KV::CGuardedButtonForm "
                     "KV::CAccountsForm KV::CRateSelectWidget KV::CCompactTypeSelectWidget KV::CCompactSelectWidget ");
}

TEST_F(DesignerTest, AControlIsMadeFromThePropertiesOfItsForm)
{
    QUiLoader loader;
    loader.addPluginPath(QFileInfo(pluginPath).path());
    QByteArray form("<ui version=\"4.0\"><widget class=\"QWidget\" name=\"desk\">"
                    "<widget class=\"KV::CTableForm\" name=\"orders\"><property name=\"metaId\"><number>16204</number>"
                    "</property><property name=\"eventId\"><number>31</number></property></widget></widget></ui>");
    QBuffer buffer(&form);
    const std::unique_ptr<QWidget> desk(loader.load(&buffer));
    ASSERT_NE(desk, nullptr);
    const auto *orders = desk->findChild<KV::CTableForm *>(QStringLiteral("orders"));
    ASSERT_NE(orders, nullptr);
    EXPECT_EQ(orders->table()->tableId(), 31);
    EXPECT_GT(orders->table()->getDataModel()->columnCount(), 5);
}

TEST_F(DesignerTest, APropertyThatIsSetLaterMakesTheControlAnewAndEventsReachTheForm)
{
    class Form : public ZB::CEventWidgetT<QWidget>
    {
    public:
        bool handleEvent(int event, int first, int, QString, void *) override
        {
            heard += std::to_string(event) + ":" + std::to_string(first) + " ";
            return true;
        }
        std::string heard;
    };
    Form form;
    auto *guarded = new KV::CGuardedButtonForm(&form);
    guarded->setText(QStringLiteral("买入"));
    form.show();
    guarded->setEventId(40);
    EXPECT_EQ(guarded->button()->text(), QStringLiteral("买入"));
    QTest::mouseClick(guarded->button(), Qt::LeftButton);
    EXPECT_EQ(form.heard, "5:40 ");
}
