/* Loads each library that it is told, by its bare name, as a careless program does. */
#include <windows.h>

int main(int count, char** names) {
    int i;
    for (i = 1; i < count; ++i) LoadLibraryA(names[i]);
    return 0;
}
