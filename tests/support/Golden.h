#pragma once
// Golden images: a raster compared with a PNG checked in under
// tests/data/golden/. On a mismatch the test fails and leaves NAME.actual.png
// in golden-out/ under the test's working directory; with
// KESTU_UPDATE_GOLDEN=1 the golden is rewritten instead.

#include <string>

#include "kestu/raster/Raster.h"

namespace kestu::test {

// Adds a test failure unless `raster` matches the golden image `name`
// (a file name without ".png"), pixel by pixel within a small tolerance.
void ExpectMatchesGolden(const Raster& raster, const std::string& name);

}  // namespace kestu::test
