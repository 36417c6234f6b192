// Startet ein Programm mit umgeleiteter Standardausgabe (und wahlweise
// Standardeingabe), damit Tests über den Prozessstarter, der stdout verwirft,
// die Ausgabe eines Programms sehen:
//   umleiten [-ein DATEI] AUSGABEDATEI PROGRAMM [ARGUMENT...]
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

int main(int argc, char** argv) {
    int i = 1;
    if (i + 1 < argc && std::strcmp(argv[i], "-ein") == 0) {
        const int ein = open(argv[i + 1], O_RDONLY);
        if (ein < 0 || dup2(ein, STDIN_FILENO) < 0) return 120;
        i += 2;
    }
    if (i + 1 >= argc) return 121;
    const int aus = open(argv[i], O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (aus < 0 || dup2(aus, STDOUT_FILENO) < 0) return 122;
    execv(argv[i + 1], argv + i + 1);
    std::perror("umleiten");
    return 123;
}
