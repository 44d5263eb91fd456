// A sound shared object that is no package.
namespace {
[[maybe_unused]] int nothing = 0;
}
