#pragma once

namespace velmora {
class Prompts;
struct WeddingState;
}

namespace velmora::store {

// Brings the open WeddingDb to the present layout: adds what is missing, keeps all rows.
// Says so when something changed; a failure is critical and false means the program
// must end. A file that another process holds locked is no fault of the file: the lock
// is told by its own text, `locked` is set and nothing need end; the next load tries again.
bool UpdateDatabase(WeddingState& state, Prompts& prompts, bool* locked = nullptr);

} // namespace velmora::store
