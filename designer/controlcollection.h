#pragma once

#include <QtCore/QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

namespace designer {

/// What the plug-in brings: every control that can stand on a form. Shows them with the reference host's dark theme.
class ControlCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit ControlCollection(QObject *parent = nullptr);
    ~ControlCollection() override;

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override { return controls; }

private:
    QList<QDesignerCustomWidgetInterface *> controls;
};

} // namespace designer
