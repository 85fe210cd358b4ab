// What no caller of the library can do without: a program in C++ that is loaded with it, and ends.
int main() {
  return 0;
}
