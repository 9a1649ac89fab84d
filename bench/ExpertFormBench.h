#pragma once

namespace bench {

// ExpertForm/<KIND> for every kind of the demo store.
void registerExpertForms();

}  // namespace bench
