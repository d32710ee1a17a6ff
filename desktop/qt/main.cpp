// The desktop program.
#include "desktop/qt/program.h"

int main(int argc, char** argv) { return velmora::RunProgram(argc, argv); }
