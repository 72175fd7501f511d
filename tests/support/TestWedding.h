#pragma once

#include "app/WeddingState.h"
#include "store/Engine.h"

#include <QTemporaryDir>
#include <QVariantMap>

namespace velmora::test {

// One invitation's fields, the plain ones filled so that the list shows it without a word.
QVariantMap invitation(const QString& family, const QString& first, int people, int confirm,
                       const QVariant& table = {}, const QString& phones = QStringLiteral("050"),
                       const QString& group = QStringLiteral("1"));

// A wedding folder of its own for one test: settings file, database and state.
class TestWedding {
public:
    TestWedding();

    WeddingState state;
    QString folder() const { return m_dir.path(); }

    // Velmora.mdb with both tables, as a new wedding has it.
    void createDatabase();
    // One invitation; fields not given stay Null (CONFIRM defaults to 0, names to "x").
    void addInvitation(const QVariantMap& fields);
    store::Database open() const;
    int count(const QString& sql) const;

private:
    QTemporaryDir m_dir;
};

} // namespace velmora::test
