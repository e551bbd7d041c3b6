#include "fakes/FakePlatform.h"

namespace moorline::test {

// Here, so that the code of all the fakes is made once and not in every test.
FakePlatform::FakePlatform() = default;

FakePlatform::~FakePlatform()
{
    clock.advance(std::chrono::minutes(1));
}

} // namespace moorline::test
