// vexhost: the executable of the host program; its work is in the host module (VEX).
extern "C" int VexHostMain(int argc, char** argv);

int main(int argc, char** argv) { return VexHostMain(argc, argv); }
