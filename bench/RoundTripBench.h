#pragma once

namespace bench {

// RoundTrip/<KIND> and HostFloor/<KIND> for every kind of the demo store.
void registerRoundTrips();

}  // namespace bench
