#include "tablewindow.h"

#include <QtCore/QCoreApplication>
#include <QtTest/QTest>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include "services/userconfig.h"

namespace testrecords {

TableWindow::TableWindow(bool paged)
{
    registerTypes();
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    window = std::make_unique<QWidget>();
    window->resize(900, 400);
    table = new KV::CHpfDataTable(tableId, MetaTicket, window.get(), kdservice::TraderStock, paged);
    auto *layout = new QVBoxLayout(window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table);
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    settle();
}

TableWindow::~TableWindow()
{
    window.reset();
    refhost::setUserConfig(nullptr);
}

void TableWindow::settle()
{
    QCoreApplication::processEvents();
    table->updateTable();
}

std::string TableWindow::shown() const
{
    const auto &model = table->getDataModel();
    QStringList headers;
    for (int column = 0; column < model->columnCount(); ++column)
        headers << model->columnHeader(column);
    std::string lines = headers.join(QLatin1Char('|')).toStdString();
    for (int row = 0; row < table->count(); ++row)
        lines += '\n' + rowText(*model, *table->getData(row));
    return lines;
}

std::string TableWindow::statistics() const
{
    const auto &model = table->getDataModel();
    QStringList texts;
    for (int column = 0; column < model->columnCount(); ++column)
        texts << model->getStatDispalyQString(column);
    return texts.join(QLatin1Char('|')).toStdString();
}

std::string TableWindow::boxes() const
{
    QStringList texts;
    for (const QDialog *box : table->findChildren<QDialog *>())
        for (const QLabel *label : box->findChildren<QLabel *>())
            texts << box->windowTitle() + QStringLiteral(": ") + label->text();
    return texts.join(QLatin1Char('\n')).toStdString();
}

} // namespace testrecords
