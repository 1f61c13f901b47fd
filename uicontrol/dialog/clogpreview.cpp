#include "dialog/clogpreview.h"

#include <KZip>

#include <QtCore/QIODevice>
#include <QtGui/QFont>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>

#include "dialog/dialoglook.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr qint64 shownBytes = 256 << 10; ///< of each file
constexpr int listWidth = 170;
constexpr int dialogWidth = 820;
constexpr int dialogHeight = 520;

} // namespace

CLogPreview::CLogPreview(const QString &mailText, const std::shared_ptr<const LogPack> &shownPack, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), mail(mailText), pack(shownPack)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("将要发送的内容"));
    auto *column = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    list = new QListWidget(this);
    contents = new QPlainTextEdit(this);
    contents->setReadOnly(true);
    contents->setLineWrapMode(QPlainTextEdit::NoWrap);
    note = new QLabel(this);
    note->setTextFormat(Qt::PlainText);
    setLabelLook(note, QStringLiteral("dim"));
    row->addWidget(list);
    row->addWidget(contents, 1);
    column->addLayout(row, 1);
    column->addWidget(note);
    list->addItem(QStringLiteral("邮件正文"));
    KZip zip(pack->path);
    if (zip.open(QIODevice::ReadOnly))
        list->addItems(zip.directory()->entries());
    connect(list, &QListWidget::currentRowChanged, this, &CLogPreview::showLine);
    applyLook();
    list->setCurrentRow(0);
}

CLogPreview::~CLogPreview() = default;

void CLogPreview::themeChanged()
{
    applyLook();
}

void CLogPreview::applyLook()
{
    setStyleSheet(dialogStyleSheet());
    const QFont mono = *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_output_log_text"));
    contents->setStyleSheet(QStringLiteral("QPlainTextEdit { font-family: \"%1\"; font-size: %2px; }")
                                .arg(mono.family())
                                .arg(mono.pixelSize()));
    list->setFixedWidth(ZB::scaled(listWidth));
    resize(ZB::scaled(dialogWidth), ZB::scaled(dialogHeight));
}

void CLogPreview::showLine(int line)
{
    note->clear();
    contents->setPlainText(line <= 0 ? mail : fileText(list->item(line)->text()));
}

QString CLogPreview::fileText(const QString &name)
{
    KZip zip(pack->path);
    const KArchiveFile *file = zip.open(QIODevice::ReadOnly) ? zip.directory()->file(name) : nullptr;
    const std::unique_ptr<QIODevice> device(file == nullptr ? nullptr : file->createDevice());
    if (device == nullptr) {
        note->setText(QStringLiteral("无法读取压缩文件：%1").arg(zip.errorString()));
        return {};
    }
    const QString total = sizeText(file->size());
    note->setText(file->size() > shownBytes ? QStringLiteral("%1，显示开头 %2").arg(total, sizeText(shownBytes))
                                            : total);
    return QString::fromUtf8(device->read(shownBytes));
}

} // namespace KV
