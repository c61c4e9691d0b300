#include <cstdio>

#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtGui/QAbstractTextDocumentLayout>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPdfWriter>
#include <QtGui/QTextDocument>

namespace
{

constexpr double k_fMarginMillimetres = 18.0;
constexpr double k_fFooterMillimetres = 10.0; ///< of the bottom margin's upper part
constexpr int k_iDotsPerInch = 600;

/// Draws one page of the text, and the footer with its number.
void drawPage(QPainter& painter, const QTextDocument& text, const QSizeF& page, double fFooterHeight, int iPage)
{
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(0, iPage * page.height(), page.width(), page.height());
    context.palette.setColor(QPalette::Text, Qt::black);
    painter.save();
    painter.translate(0, -iPage * page.height());
    painter.setClipRect(context.clip);
    text.documentLayout()->draw(&painter, context);
    painter.restore();

    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(8);
    painter.setFont(font);
    painter.setPen(QColor(0x4a, 0x5b, 0x6d));
    const QRectF footer(0, page.height() + fFooterHeight / 2, page.width(), fFooterHeight / 2);
    painter.drawText(footer, Qt::AlignLeft | Qt::AlignBottom, text.metaInformation(QTextDocument::DocumentTitle));
    painter.drawText(footer, Qt::AlignRight | Qt::AlignBottom, QStringLiteral("%1 / %2").arg(iPage + 1).arg(text.pageCount()));
}

bool writeDocument(const QString& strHtml, QIODevice& target)
{
    QPdfWriter writer(&target);
    writer.setResolution(k_iDotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(k_fMarginMillimetres, k_fMarginMillimetres, k_fMarginMillimetres, k_fMarginMillimetres),
                          QPageLayout::Millimeter);
    writer.setCreator(QStringLiteral("Halvane"));

    QTextDocument text;
    text.documentLayout()->setPaintDevice(&writer);
    text.setDocumentMargin(0);
    text.setHtml(strHtml);
    writer.setTitle(text.metaInformation(QTextDocument::DocumentTitle));

    const double fFooterHeight = k_fFooterMillimetres / 25.4 * k_iDotsPerInch;
    const QSizeF page(writer.width(), writer.height() - fFooterHeight);
    text.setPageSize(page);

    QPainter painter(&writer);
    if (!painter.isActive())
        return false;
    for (int iPage = 0; iPage < text.pageCount(); ++iPage)
    {
        if (iPage != 0 && !writer.newPage())
            return false;
        drawPage(painter, text, page, fFooterHeight, iPage);
    }
    return painter.end();
}

} // namespace

/// make-format-document SOURCE.html TARGET.pdf: sets a document in Qt's subset of HTML as A4 pages with numbers.
int main(int iCount, char** apArguments)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(iCount, apArguments);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3)
    {
        std::fputs("usage: make-format-document SOURCE.html TARGET.pdf\n", stderr);
        return 2;
    }
    QFile source(arguments[1]);
    QSaveFile target(arguments[2]);
    if (!source.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly) ||
        !writeDocument(QString::fromUtf8(source.readAll()), target) || !target.commit())
    {
        std::fprintf(stderr, "make-format-document: %s could not be made from %s\n", qPrintable(arguments[2]), qPrintable(arguments[1]));
        return 1;
    }
    return 0;
}
