#include "app/StartFolder.h"

#include "app/Product.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace velmora {

namespace {

// The usage names the program as typed, without its folder (Qt's own text gives the whole
// path, or "<executable_name>" before the application object exists).
QString helpText(const QCommandLineParser& parser, const QString& program)
{
    const QString named = QCoreApplication::instance() ? QCoreApplication::arguments().constFirst()
                                                       : QStringLiteral("<executable_name>");
    QString text = parser.helpText();
    if (const qsizetype at = text.indexOf(named); at >= 0)
        text.replace(at, named.size(), QFileInfo(program).fileName());
    return text;
}

bool sameFolder(const QString& a, const QString& b)
{
    return !a.isEmpty() && !b.isEmpty() && QDir::cleanPath(a) == QDir::cleanPath(b);
}

} // namespace

CommandLine ReadCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Velmora prepares a wedding: guests, seating, budget and printouts.\n"
        "A wedding is a folder holding Velmora.mdb and velmora.ini. Velmora opens the folder\n"
        "named here; without one, the folder it is started in. Started in the home or the root\n"
        "folder, or with --documents (as from the desktop's menu), it opens the folder\n"
        "Velmora in your documents folder and makes it on first start."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help and end."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version and end."));
    const QCommandLineOption documents(QStringLiteral("documents"),
                                       QStringLiteral("Open the wedding in your documents folder."));
    parser.addOptions({help, version, documents});
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("The wedding's folder, made when missing."),
                                 QStringLiteral("[folder]"));

    CommandLine line;
    const auto fault = [&](const QString& text) {
        line.answer = text + QStringLiteral("\n\n") + helpText(parser, arguments.value(0, QStringLiteral("velmora")));
        line.exitCode = 2;
        return line;
    };
    if (!parser.parse(arguments))
        return fault(parser.errorText());
    if (parser.isSet(help)) {
        line.answer = helpText(parser, arguments.value(0, QStringLiteral("velmora")));
        return line;
    }
    if (parser.isSet(version)) {
        line.answer = product::Title + u' ' + product::version() + u'\n';
        return line;
    }
    const QStringList folders = parser.positionalArguments();
    if (folders.size() > 1)
        return fault(QStringLiteral("Name one folder only."));
    line.documents = parser.isSet(documents);
    if (!folders.isEmpty()) {
        if (line.documents)
            return fault(QStringLiteral("Name a folder or --documents, not both."));
        line.folder = folders.first();
    }
    return line;
}

QString DocumentsWeddingFolder(const QString& documents)
{
    return QDir(documents).filePath(product::Title);
}

QString WeddingFolder(const CommandLine& line, const QString& currentDirectory, const QString& home,
                      const QString& documents)
{
    if (!line.folder.isEmpty())
        return QDir::cleanPath(QDir(currentDirectory).absoluteFilePath(line.folder));
    if (line.documents || sameFolder(currentDirectory, home) || QDir(currentDirectory).isRoot())
        return DocumentsWeddingFolder(documents);
    return currentDirectory;
}

QString MakeWeddingFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (info.isDir())
        return {};
    if (info.exists())
        return QStringLiteral("לא ניתן לפתוח חתונה בתיקייה: יש קובץ בשם זה.") + u'\n' + folder;
    if (!QDir().mkpath(folder))
        return QStringLiteral("לא ניתן ליצור את תיקיית החתונה.") + u'\n' + folder;
    return {};
}

} // namespace velmora
