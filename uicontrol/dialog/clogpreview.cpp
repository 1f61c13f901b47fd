#include "dialog/clogpreview.h"

#include <KZip>

#include <QtCore/QIODevice>
#include <QtGui/QFont>
#include <QtGui/QTextCursor>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include "dialog/dialoglook.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr qint64 pieceBytes = 256 << 10; ///< read and shown at a time
constexpr int listWidth = 170;
constexpr int dialogWidth = 820;
constexpr int dialogHeight = 520;

} // namespace

CLogPreview::CLogPreview(const QString &mailText, const std::shared_ptr<const LogPack> &shownPack, QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), mail(mailText), pack(shownPack),
      zip(std::make_unique<KZip>(shownPack->path))
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
    moreButton = new QPushButton(QStringLiteral("继续显示"), this);
    moreButton->setFlat(true);
    moreButton->setAutoDefault(false);
    auto *bottom = new QHBoxLayout;
    auto *closeButton = new QPushButton(QStringLiteral("关闭"), this);
    bottom->addWidget(note);
    bottom->addWidget(moreButton);
    bottom->addStretch();
    bottom->addWidget(closeButton);
    column->addLayout(bottom);
    list->addItem(QStringLiteral("邮件正文"));
    if (zip->open(QIODevice::ReadOnly))
        list->addItems(zip->directory()->entries());
    connect(moreButton, &QPushButton::clicked, this, &CLogPreview::showMore);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::accept);
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
    fitToScale(this, QSize(dialogWidth, dialogHeight));
}

void CLogPreview::showLine(int line)
{
    contents->clear();
    note->clear();
    file.reset();
    rest.clear();
    moreButton->hide();
    if (line <= 0)
        contents->setPlainText(mail);
    else
        openFile(list->item(line)->text());
}

void CLogPreview::openFile(const QString &name)
{
    const KArchiveFile *entry = zip->isOpen() ? zip->directory()->file(name) : nullptr;
    file.reset(entry == nullptr ? nullptr : entry->createDevice());
    if (file == nullptr) {
        note->setText(QStringLiteral("无法读取压缩文件：%1").arg(zip->errorString()));
        return;
    }
    fileSize = entry->size();
    shownSize = 0;
    showMore();
    contents->moveCursor(QTextCursor::Start);
}

/// Whole lines, where they are not longer than a piece.
void CLogPreview::showMore()
{
    const QByteArray more = file->read(pieceBytes);
    shownSize += more.size();
    rest += more;
    const bool isAll = more.isEmpty() || shownSize >= fileSize;
    const int lineEnd = rest.lastIndexOf('\n') + 1;
    const int end = isAll || lineEnd == 0 ? rest.size() : lineEnd;
    QTextCursor cursor(contents->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QString::fromUtf8(rest.left(end)));
    rest.remove(0, end);
    moreButton->setVisible(!isAll);
    note->setText(isAll ? sizeText(fileSize)
                        : QStringLiteral("%1，已显示 %2").arg(sizeText(fileSize), sizeText(shownSize)));
}

} // namespace KV
