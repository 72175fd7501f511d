#include "PrintedPdf.h"

#include <QProcess>
#include <QRegularExpression>

namespace velmora::test {

namespace {

QString output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(30000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

QString pdfText(const QString& path)
{
    return output(QStringLiteral("pdftotext"), {path, QStringLiteral("-")}).remove(QChar(0x202A)).remove(QChar(0x202B))
        .remove(QChar(0x202C));
}

int pdfPages(const QString& path)
{
    static const QRegularExpression pages(QStringLiteral("Pages:\\s+(\\d+)"));
    const auto match = pages.match(output(QStringLiteral("pdfinfo"), {path}));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

} // namespace velmora::test
