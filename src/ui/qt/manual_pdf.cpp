// vornelt-manual-pdf MANUAL.md MANUAL.pdf [PREVIEW-FOLDER]
// Turns the manual from Markdown into the PDF that the Help menu opens, with Qt's own text
// layout: pictures are taken from beside the Markdown file and fitted to the page. With a
// preview folder, each page is also drawn as a PNG picture there, by the same painting.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextImageFormat>

#include <cstdio>

namespace {

QString ReadAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(f.readAll());
}

// Every picture no wider than the text.
void FitPictures(QTextDocument& doc, qreal textWidth) {
    for (QTextBlock block = doc.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().isImageFormat()) continue;
            QTextImageFormat image = fragment.charFormat().toImageFormat();
            const QImage picture = doc.resource(QTextDocument::ImageResource, QUrl(image.name())).value<QImage>();
            if (picture.isNull()) continue;
            const qreal width = std::min<qreal>(textWidth, picture.width());
            image.setWidth(width);
            image.setHeight(width * picture.height() / picture.width());
            QTextCursor cursor(&doc);
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(image);
        }
    }
}

// Paints page `page` of the laid-out document, with its number at the foot.
void PaintPage(QPainter& p, QTextDocument& doc, int page) {
    const QSizeF size = doc.pageSize();
    p.save();
    p.translate(0, -page * size.height());
    doc.drawContents(&p, QRectF(0, page * size.height(), size.width(), size.height()));
    p.restore();
    QFont small = doc.defaultFont();
    small.setPointSizeF(8);
    p.setFont(small);
    p.setPen(QColor(0x70, 0x70, 0x70));
    p.drawText(QRectF(0, size.height() - 14, size.width(), 14), Qt::AlignRight | Qt::AlignBottom,
               QString::number(page + 1));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::fprintf(stderr, "usage: vornelt-manual-pdf MANUAL.md MANUAL.pdf [PREVIEW-FOLDER]\n");
        return 2;
    }
    QGuiApplication app(argc, argv);
    const QString source = QString::fromLocal8Bit(argv[1]);
    const QString target = QString::fromLocal8Bit(argv[2]);
    const QString markdown = ReadAll(source);
    if (markdown.isEmpty()) {
        std::fprintf(stderr, "vornelt-manual-pdf: cannot read %s\n", argv[1]);
        return 1;
    }

    QTextDocument doc;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(10);
    doc.setDefaultFont(font);
    doc.setMarkdown(markdown);
    // The pictures the manual names, from beside it (after the text: setting it forgets them).
    const QDir folder = QFileInfo(source).absoluteDir();
    const QRegularExpression picture(QStringLiteral(R"(!\[[^\]]*\]\(([^)\s]+)\))"));
    for (auto m = picture.globalMatch(markdown); m.hasNext();) {
        const QString name = m.next().captured(1);
        const QImage image(folder.filePath(name));
        if (image.isNull()) {
            std::fprintf(stderr, "vornelt-manual-pdf: cannot read the picture %s\n", qPrintable(name));
            return 1;
        }
        doc.addResource(QTextDocument::ImageResource, QUrl(name), image);
    }

    QPdfWriter pdf(target);
    pdf.setTitle(QStringLiteral("Vornelt Manual"));
    pdf.setCreator(QStringLiteral("Vornelt"));
    pdf.setResolution(300);
    pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(18, 18, 18, 18),
                                  QPageLayout::Millimeter));
    // Laid out in the pixels of a 96 dpi screen, which the font sizes in points assume.
    constexpr qreal kLayoutDpi = 96.0;
    const QRectF text = pdf.pageLayout().paintRect(QPageLayout::Inch);
    doc.setPageSize(text.size() * kLayoutDpi);
    FitPictures(doc, doc.pageSize().width() - 2 * doc.documentMargin());
    const int pages = doc.pageCount();
    {
        QPainter p(&pdf);
        if (!p.isActive()) {
            std::fprintf(stderr, "vornelt-manual-pdf: cannot write %s\n", argv[2]);
            return 1;
        }
        const qreal scale = pdf.resolution() / kLayoutDpi;
        for (int page = 0; page < pages; ++page) {
            if (page > 0) pdf.newPage();
            p.save();
            p.scale(scale, scale);
            PaintPage(p, doc, page);
            p.restore();
        }
    }
    if (argc == 4) {
        const QDir preview(QString::fromLocal8Bit(argv[3]));
        preview.mkpath(QStringLiteral("."));
        for (int page = 0; page < pages; ++page) {
            QImage image(doc.pageSize().toSize(), QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter p(&image);
            p.setRenderHint(QPainter::Antialiasing);
            PaintPage(p, doc, page);
            p.end();
            image.save(preview.filePath(QStringLiteral("manual-page-%1.png").arg(page + 1)));
        }
    }
    return 0;
}
