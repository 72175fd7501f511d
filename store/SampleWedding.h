#pragma once

#include "store/Engine.h"

#include <QStringList>

namespace velmora::store {

// A believable guest list for demonstrations, benchmarks and tests: Hebrew names, phones,
// addresses, every group and answer, seats within the chair limit, money and other gifts.
// The same seed gives the same list.
struct SampleOptions {
    int invitations = 300;
    int groups = 6; // 3 standard groups and the rest of the user's
    int maxTables = 40;
    int maxChairs = 12;
    quint32 seed = 2027;
};

// The group names the sample uses after the three standard ones.
QStringList sampleUserGroups();

// Adds the invitations to VELMORA_LIST of an open database.
void fillSampleWedding(Database& db, const SampleOptions& options);

} // namespace velmora::store
