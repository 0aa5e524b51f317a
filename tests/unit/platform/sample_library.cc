// Loaded by the test of dynamic libraries.
extern "C" void sampleEntry();
void sampleEntry() {}
