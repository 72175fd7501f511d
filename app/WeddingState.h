#pragma once

#include "store/Engine.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace velmora::printing {
class RecordSet;
class ReportConnection;
}

namespace velmora {

// What a refresh of the table map knows of one table.
struct TableRecord {
    int PeopleCount = 0;
    QString PeopleNames;
};

// The one set of variables that all windows share. Made once at start and handed to the
// windows; nothing else is global.
struct WeddingState {
    // Paths, text and the data connection.
    QString AppPath; // always ends in the path separator
    QString CrLf;
    store::Database WeddingDb;
    store::Recordset WeddingRs;
    QString SqlText;
    // The rows of the report being shown and the reports' connection.
    std::shared_ptr<printing::ReportConnection> ReportConn;
    std::shared_ptr<printing::RecordSet> ReportRs;

    // The wedding's options.
    QString CoupleName;
    QString HisFamily;
    QString HerFamily;
    quint8 NumOfGroups = 0;
    QStringList UserGroups;
    quint8 MaxTables = 100;
    quint8 MaxChairs = 15;
    QDate WeddingDate = QDate::currentDate();
    qint32 DaysLeft = 0;
    QString AllGuests;

    // The list now shown. Counts, totals and grid positions are wide enough for any list
    // that fits on disk: a million invitations of 255 people each still counts true.
    QString CurGroup;
    QString ListOrder;
    qint32 InvCount = 0;
    qint32 GuestsConfirmed = 0;
    qint32 GuestsNotComing = 0;
    qint32 GuestsUnknown = 0;
    qint64 PresentTotal = 0; // whole shekels

    // The current invitation and the dialogs.
    quint8 InvMode = 0;
    bool InvMulti = false;
    qint32 InvRowFrom = 0;
    qint32 InvRowTo = 0;
    QString CurFamilyName;
    QString CurFirstName;
    qint32 InvRsPos = 0;
    qint32 SavedRow = 0;
    qint32 SavedTopRow = 0;
    bool DialerFree = false;
    bool DialPending = false;
    QString DialNumber;

    // Seating and printing.
    quint8 CurTable = 0;
    quint8 CurTableChairs = 0;
    quint8 TableViewMode = 0;
    std::vector<TableRecord> TableInfo;
    bool OptionsPending = false;
    bool LabelFrame = false;
    bool LabelAddress = false;
    qint32 LabelColor = 0;
    QString NoteStyle;
    qint32 PrintPage = 0;

    // The settings file and the database of this wedding.
    QString iniFile() const { return AppPath + QStringLiteral("velmora.ini"); }
    QString databaseFile() const { return AppPath + QStringLiteral("Velmora.mdb"); }
};

} // namespace velmora
