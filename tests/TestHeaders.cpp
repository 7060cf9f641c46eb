// Compiled for its precompiled headers only.
int main() {}
