#pragma once

namespace bromvale {

// Makes sure that the components are registered. Called once at each start, on both roads.
void CheckLibs();

}  // namespace bromvale
