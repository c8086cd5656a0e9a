// The least that a program does: it starts and ends, with the libraries of every C++ program.
int main() {}
