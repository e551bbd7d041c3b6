#include "harness/TestCase.h"

int main(int argc, char **argv)
{
    return moorline::test::runAll(argc, argv);
}
