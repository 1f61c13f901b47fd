#pragma once

#include <QtCore/QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <functional>

namespace designer {

/// One control in Designer's box.
class FormControlPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    struct Description
    {
        QString className; ///< "KV::CLogForm"
        QString header;    ///< what code that is made from a form includes
        QString toolTip;
        QString properties; ///< in the form's language, set on a new one
        std::function<QWidget *(QWidget *parent)> make;
    };

    FormControlPlugin(const Description &description, QObject *parent);
    ~FormControlPlugin() override;

    QString name() const override { return about.className; }
    QString group() const override;
    QString toolTip() const override { return about.toolTip; }
    QString whatsThis() const override { return about.toolTip; }
    QString includeFile() const override { return about.header; }
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    QWidget *createWidget(QWidget *parent) override { return about.make(parent); }
    QString domXml() const override;

private:
    const Description about;
};

} // namespace designer
