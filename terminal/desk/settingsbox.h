#pragma once

#include <QtWidgets/QDialog>

class QDoubleSpinBox;
class QFormLayout;
class QSpinBox;

namespace terminal {

/// A box of numbers to be set, a line each. Enter takes them over, Escape gives up.
class SettingsBox : public QDialog
{
    Q_OBJECT

public:
    ~SettingsBox() override;

protected:
    SettingsBox(const QString &title, QWidget *parent);

    /// A whole number from 1 on. The name is the field's object name.
    QSpinBox *addCount(const QString &caption, const char *name, qint64 value, int largest, const QString &unit);
    QDoubleSpinBox *addNumber(const QString &caption, const char *name, double value, double least, double largest,
                              int decimals, const QString &unit);
    /// To be called once, after all of them.
    void addButtons();

private:
    QFormLayout *form;
};

} // namespace terminal
