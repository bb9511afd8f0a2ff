// Stands in for gcc, g++, ar and windres in tests of the build. It is started through a link of the
// tool's name and looks for its orders in the folder of that link:
//
//   calls      gets one line per call: the tool's name and its arguments, separated by tabs, with
//              "\n", "\t" and "\\" spelled with a backslash
//   NAME.do    what the tool of that name does, one deed a line: "print TEXT", "environment NAME"
//              (prints the variable), "read FILE" (names it as compilers do), "exit STATUS", "kill
//              SIGNAL", "when ARGUMENT" (else the rest is passed over), "for ARGUMENT" (else the
//              deeds up to the next "for" are passed over), "mute" (write nothing), "raw TEXT"
//              (prints it without a newline), "flood LINES" (prints so many), "await FILE" (goes
//              on when the file is there), "touch FILE", "pid FILE" (writes its
//              process number), "stubborn" (is not ended by SIGTERM),
//              "grandchild" (leaves a process that holds the output), "wait" (goes on for a
//              minute with a cut product), "launch" (becomes what its arguments say)
//
// As a compiler it hands on what stands in SOURCE.d, if there is such a file, as the list of files
// that it has read. It writes the file after "-o" or, for ar, after "-r". Plain C and static,
// because a test may start it a thousand times.

#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

namespace {

constexpr int cLongest = 1 << 16;

void WriteEscaped(FILE* file, const char* text) {
  for (; *text; ++text) {
    const char c = *text;
    if (c == '\n')
      fputs("\\n", file);
    else if (c == '\t')
      fputs("\\t", file);
    else if (c == '\\')
      fputs("\\\\", file);
    else
      fputc(c, file);
  }
}

struct Orders {
  int status = 0;
  int signalNumber = 0;
  bool mute = false;
  bool wait = false;
};

void PrintLines(int count) {
  for (int i = 0; i < count; ++i)
    puts("0123456789012345678901234567890123456789012345678901234567890123456789012345678");
}

void Await(const char* path) {
  for (int i = 0; i < 60000 && access(path, F_OK) != 0; ++i) usleep(1000);
}

void Touch(const char* path) {
  FILE* file = fopen(path, "a");
  if (file) fclose(file);
}

void WriteProcess(const char* path) {
  FILE* file = fopen(path, "w");
  if (!file) return;
  fprintf(file, "%d\n", static_cast<int>(getpid()));
  fclose(file);
}

void LeaveGrandchild() {
  fflush(stdout);
  if (fork() != 0) return;
  sleep(60);
  _exit(0);
}

bool HasArgument(int count, char** values, const char* wanted) {
  for (int i = 1; i < count; ++i)
    if (strcmp(values[i], wanted) == 0) return true;
  return false;
}

void PrintVariable(const char* name) {
  const char* value = getenv(name);
  value ? printf("%s=%s\n", name, value) : printf("%s is not set\n", name);
}

// The value of the variable is a file and, after a blank, the target of the rule.
void NoteRead(const char* name) {
  const char* output = getenv("DEPENDENCIES_OUTPUT");
  if (!output) return;
  char path[cLongest];
  snprintf(path, sizeof path, "%.*s", static_cast<int>(strcspn(output, " ")), output);
  FILE* file = fopen(path, "a");
  if (!file) return;
  fprintf(file, "target: %s\n", name);
  fclose(file);
}

Orders ReadOrders(const char* path, int count, char** values) {
  Orders orders;
  FILE* file = fopen(path, "r");
  if (!file) return orders;
  static char line[cLongest];
  bool isMeant = true;
  while (fgets(line, sizeof line, file)) {
    line[strcspn(line, "\n")] = '\0';
    if (strncmp(line, "for ", 4) == 0) isMeant = HasArgument(count, values, line + 4);
    if (!isMeant) continue;
    if (strncmp(line, "raw ", 4) == 0) fputs(line + 4, stdout);
    if (strncmp(line, "flood ", 6) == 0) PrintLines(atoi(line + 6));
    if (strncmp(line, "await ", 6) == 0) fflush(stdout), Await(line + 6);
    if (strncmp(line, "touch ", 6) == 0) Touch(line + 6);
    if (strncmp(line, "pid ", 4) == 0) WriteProcess(line + 4);
    if (strcmp(line, "stubborn") == 0) signal(SIGTERM, SIG_IGN);
    if (strcmp(line, "grandchild") == 0) LeaveGrandchild();
    if (strcmp(line, "launch") == 0) fflush(stdout), execv(values[1], values + 1);
    if (strncmp(line, "print ", 6) == 0) puts(line + 6);
    if (strncmp(line, "environment ", 12) == 0) PrintVariable(line + 12);
    if (strncmp(line, "read ", 5) == 0) NoteRead(line + 5);
    if (strncmp(line, "exit ", 5) == 0) orders.status = atoi(line + 5);
    if (strncmp(line, "kill ", 5) == 0) orders.signalNumber = atoi(line + 5);
    if (strcmp(line, "mute") == 0) orders.mute = true;
    if (strcmp(line, "wait") == 0) orders.wait = true;
    if (strncmp(line, "when ", 5) == 0 && !HasArgument(count, values, line + 5)) break;
  }
  fclose(file);
  return orders;
}

const char* Product(int count, char** values) {
  for (int i = 1; i + 1 < count; ++i)
    if (strcmp(values[i], "-o") == 0 || strcmp(values[i], "-r") == 0) return values[i + 1];
  return nullptr;
}

void WriteProduct(const char* path, bool cut) {
  FILE* file = fopen(path, "w");
  if (!file) return;
  fputs(cut ? "cut" : "whole\n", file);
  fclose(file);
}

// The list of read files of the source, the argument before "-o".
void HandOnReadFiles(int count, char** values) {
  const char* output = getenv("DEPENDENCIES_OUTPUT");
  char path[cLongest];
  for (int i = 2; output && i < count; ++i) {
    if (strcmp(values[i], "-o") != 0) continue;
    snprintf(path, sizeof path, "%s.d", values[i - 1]);
    FILE* list = fopen(path, "r");
    if (!list) return;
    snprintf(path, sizeof path, "%.*s", static_cast<int>(strcspn(output, " ")), output);
    FILE* file = fopen(path, "a");
    for (int c; file && (c = getc(list)) != EOF;) putc(c, file);
    if (file) fclose(file);
    fclose(list);
  }
}

void NoteCall(const char* folder, const char* name, int count, char** values) {
  char path[cLongest];
  snprintf(path, sizeof path, "%s/calls", folder);
  FILE* file = fopen(path, "a");
  if (!file) return;
  fputs(name, file);
  for (int i = 1; i < count; ++i) {
    fputc('\t', file);
    WriteEscaped(file, values[i]);
  }
  fputc('\n', file);
  fclose(file);
}

}  // namespace

int main(int count, char** values) {
  char* slash = strrchr(values[0], '/');
  if (!slash) return 3;
  *slash = '\0';
  const char* folder = values[0];
  const char* name = slash + 1;
  NoteCall(folder, name, count, values);
  char path[cLongest];
  snprintf(path, sizeof path, "%s/%s.do", folder, name);
  const Orders orders = ReadOrders(path, count, values);
  HandOnReadFiles(count, values);
  const char* product = Product(count, values);
  if (product && !orders.mute) WriteProduct(product, orders.signalNumber || orders.wait);
  fflush(stdout);
  if (orders.wait) sleep(60);
  if (orders.signalNumber) raise(orders.signalNumber);
  return orders.status;
}
