// The smallest shared library that still exports a function, loaded as a comparison.
extern "C" __attribute__((visibility("default"))) int RlxBenchBaseline() { return 42; }
