#include "account/caccountlistcolumnsettingwidget.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <algorithm>

#include "account/caccountcolumnlist.h"
#include "kv/cuserconfig.h"
#include "zb/csmallnormalbutton.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int eventClicked = 5;
constexpr int buttonDefault = 1;
constexpr int buttonClose = 2;
constexpr int margin = 8;
constexpr int listWidth = 264;
constexpr int fewestLines = 4;
constexpr int mostLines = 14;

QString usualHint()
{
    return QStringLiteral("空格 显示/隐藏，L 锁定，Ctrl+↑↓ 移动");
}

/// Below the anchor where there is room, else above; never beyond the screen.
QRect placedAt(const QRect &anchor, const QSize &size, const QRect &screen)
{
    QRect place(QPoint(anchor.left(), anchor.bottom() + 1), size);
    if (place.bottom() > screen.bottom() && anchor.top() - size.height() >= screen.top())
        place.moveBottom(anchor.top() - 1);
    place.moveTop(std::max(screen.top(), std::min(place.top(), screen.bottom() + 1 - size.height())));
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - size.width())));
    return place;
}

} // namespace

CAccountListColumnSettingWidget::CAccountListColumnSettingWidget(int listId, QWidget *parent)
    : ZB::CBaseWidget(parent, QStringLiteral("account_list_column_setting")), id(listId)
{
    setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    auto *column = new QVBoxLayout(this);
    title = new QLabel(QStringLiteral("列设置"), this);
    hint = new QLabel(usualHint(), this);
    list = new CAccountColumnList(this);
    list->setAccessibleName(title->text());
    defaultButton = new ZB::CSmallNormalButton(buttonDefault, true, ZB::NormalButtonRaised, this);
    closeButton = new ZB::CSmallNormalButton(buttonClose, true, ZB::NormalButtonRaised, this);
    defaultButton->setText(QStringLiteral("恢复默认"));
    closeButton->setText(QStringLiteral("关闭"));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(defaultButton);
    buttons->addStretch();
    buttons->addWidget(closeButton);
    column->addWidget(title);
    column->addWidget(list);
    column->addWidget(hint);
    column->addLayout(buttons);
    setFocusProxy(list);
    connect(list, &CAccountColumnList::sigCheckWanted, this, &CAccountListColumnSettingWidget::turnVisible);
    connect(list, &CAccountColumnList::sigLockWanted, this, &CAccountListColumnSettingWidget::turnLocked);
    connect(list, &CAccountColumnList::sigMoveWanted, this, &CAccountListColumnSettingWidget::moveColumn);
    applyLook();
}

CAccountListColumnSettingWidget::~CAccountListColumnSettingWidget() = default;

void CAccountListColumnSettingWidget::applyLook()
{
    ZB::CUiResource *resource = ZB::CUiResource::instance();
    const auto label = [resource](QLabel *each, const char *font, const char *color) {
        each->setFont(*resource->getFont(QLatin1String(font)));
        QPalette palette = each->palette();
        palette.setColor(QPalette::WindowText, *resource->getColor(QLatin1String(color)));
        each->setPalette(palette);
    };
    label(title, "fnt_default_bold", "clr_text_default");
    label(hint, "fnt_default_small", "clr_text_second");
    const int gap = ZB::scaled(margin);
    layout()->setContentsMargins(gap, gap, gap, gap);
    layout()->setSpacing(ZB::scaled(6));
    list->applyLook();
    const int lines = std::clamp(list->count(), fewestLines, mostLines);
    list->setFixedSize(ZB::scaled(listWidth), lines * CAccountColumnDelegate::lineHeight() + 2 * list->frameWidth());
    if (isVisible())
        adjustSize();
    update();
}

void CAccountListColumnSettingWidget::themeChanged()
{
    if (list != nullptr)
        applyLook();
}

void CAccountListColumnSettingWidget::setDefaultColumns(const QVector<CAccountListColumn> &columns)
{
    order.setDefaults(columns);
    if (const CUserConfig *config = getUserConfig())
        order.restore(config->value(path()).toStringList());
    refill(0);
}

void CAccountListColumnSettingWidget::setColumns(const QVector<CAccountListColumn> &columns)
{
    const QVector<CAccountListColumn> before = order.columns();
    order.setColumns(columns);
    refill(list->currentRow());
    if (order.columns() != before)
        keep();
}

QString CAccountListColumnSettingWidget::path() const
{
    return QStringLiteral("accountlist/%1/columns").arg(id);
}

void CAccountListColumnSettingWidget::refill(int currentLine)
{
    list->showColumns(order.columns());
    list->setCurrentRow(std::min(currentLine, list->count() - 1));
    defaultButton->setEnabled(!order.isDefault());
}

void CAccountListColumnSettingWidget::changed(int currentLine)
{
    refill(currentLine);
    hint->setText(usualHint());
    keep();
    Q_EMIT sigColumnsChanged(QVector<CAccountListColumn>(order.columns()));
}

void CAccountListColumnSettingWidget::keep() const
{
    const QStringList saved = order.saved();
    if (CUserConfig *config = getUserConfig())
        config->setValue(path(), saved.isEmpty() ? QVariant() : QVariant(saved));
}

void CAccountListColumnSettingWidget::turnVisible(int line)
{
    if (line < 0 || line >= columns().size())
        return;
    const bool locked = columns()[line].locked;
    if (order.setVisible(line, !columns()[line].visible))
        changed(line);
    else
        hint->setText(locked ? QStringLiteral("锁定的列不能隐藏") : QStringLiteral("至少要显示一列"));
}

void CAccountListColumnSettingWidget::turnLocked(int line)
{
    if (line < 0 || line >= columns().size())
        return;
    const int place = order.setLocked(line, !columns()[line].locked);
    if (place >= 0)
        changed(place);
}

void CAccountListColumnSettingWidget::moveColumn(int line, int gap)
{
    if (line < 0 || line >= columns().size())
        return;
    const bool locked = columns()[line].locked;
    const int place = order.move(line, gap);
    if (place >= 0)
        changed(place);
    else if (locked)
        hint->setText(QStringLiteral("锁定的列不能移动"));
}

void CAccountListColumnSettingWidget::restoreDefaults()
{
    order.restoreDefaults();
    changed(0);
}

bool CAccountListColumnSettingWidget::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event != eventClicked)
        return ZB::CBaseWidget::handleEvent(event, first, second, text, pointer);
    if (first == buttonDefault)
        restoreDefaults();
    else
        close();
    return true;
}

void CAccountListColumnSettingWidget::showAt(const QRect &anchor)
{
    hint->setText(usualHint());
    applyLook();
    adjustSize();
    const QScreen *screen = QGuiApplication::screenAt(anchor.bottomLeft());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    setGeometry(placedAt(anchor, size(), screen->availableGeometry()));
    show();
    list->setFocus(Qt::PopupFocusReason);
}

void CAccountListColumnSettingWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        ZB::CBaseWidget::keyPressEvent(event);
}

void CAccountListColumnSettingWidget::paintEvent(QPaintEvent *)
{
    ZB::CUiResource *resource = ZB::CUiResource::instance();
    QPainter painter(this);
    painter.fillRect(rect(), *resource->getColor(QStringLiteral("clr_border")));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), *resource->getColor(QStringLiteral("clr_background")));
}

} // namespace KV
