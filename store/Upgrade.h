#pragma once

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::store {

// Brings the open WeddingDb to the present layout: adds what is missing, keeps all rows.
// Says so when something changed; a failure is critical and false means the program
// must end.
bool UpdateDatabase(WeddingState& state, Prompts& prompts);

} // namespace velmora::store
