#pragma once

#include "app/WeddingState.h"
#include "store/Engine.h"

#include <QTemporaryDir>
#include <QVariantMap>

#include <functional>

namespace velmora::test {

// Each test starts with nothing of its own in the per-user store.
void clearUserStore();

// One invitation's fields, the plain ones filled so that the list shows it without a word.
QVariantMap invitation(const QString& family, const QString& first, int people, int confirm,
                       const QVariant& table = {}, const QString& phones = QStringLiteral("050"),
                       const QString& group = QStringLiteral("1"));

// A settings file's value, "<none>" when it has none.
QString iniValue(const QString& file, const char* section, const char* key);

// A file's bytes; "<missing>" when it can't be read.
QByteArray fileBytes(const QString& path);
// Writes the bytes over the file; fails the running test when it can't.
void writeFile(const QString& path, const QByteArray& bytes);
// The failure a step throws; number 0 when it throws none.
Failure failureIn(const std::function<void()>& step);
int failureOf(const std::function<void()>& step);

// A wedding folder of its own for one test: settings file, database and state.
class TestWedding {
public:
    TestWedding();

    WeddingState state;
    QString folder() const { return m_dir.path(); }

    // Velmora.mdb with both tables, as a new wedding has it.
    void createDatabase();
    // A fresh per-user store, the database, and the settings file with these limits.
    void createWedding(quint8 maxTables, quint8 maxChairs = 15);
    // One invitation; fields not given stay Null (CONFIRM defaults to 0, names to "x").
    void addInvitation(const QVariantMap& fields);
    store::Database open() const;
    int count(const QString& sql) const;
    // The rows of one name pair, as the program looks them up.
    store::Recordset row(const QString& family, const QString& first) const;
    // One field of that pair's first row.
    QVariant value(const QString& family, const QString& first, const QString& field) const;

private:
    QTemporaryDir m_dir;
};

} // namespace velmora::test
