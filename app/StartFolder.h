#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

// What the command line asks of the program.
struct CommandLine {
    QString answer;         // text for the terminal instead of a start: help, version or the fault
    int exitCode = 0;       // with an answer: 0 for help and version, 2 for a wrong line
    QString folder;         // the wedding's folder named on the line, empty when none
    bool documents = false; // --documents, as the menu entry starts the program
    bool starts() const { return answer.isEmpty(); }
};

// Reads the arguments, the program's own name first, Qt's options already taken out.
CommandLine ReadCommandLine(const QStringList& arguments);

// The folder of the user's documents that holds the wedding when the program can't use
// the folder it was started in.
QString DocumentsWeddingFolder(const QString& documents);

// Where the wedding lies: the folder named on the command line; else, with --documents or
// when started in the home or the root folder (as a desktop menu starts programs, where
// no wedding belongs), the documents folder; else the folder the program was started in.
QString WeddingFolder(const CommandLine& line, const QString& currentDirectory, const QString& home,
                      const QString& documents);

// Makes the wedding's folder on first use; the reason in words when it can't.
QString MakeWeddingFolder(const QString& folder);

} // namespace velmora
