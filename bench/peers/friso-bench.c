/* Times Debian's friso on the same text the other benchmarks read, so its figures sit beside ours
 * in one run. Load time is reported for context; segmentation is the figure compared. */
#define _POSIX_C_SOURCE 200809L
#include <friso/friso.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

static double nowMs(void) {
  struct timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return (double)ts.tv_sec * 1e3 + (double)ts.tv_nsec / 1e6;
}

static int compareDoubles(const void* a, const void* b) {
  double x = *(const double*)a, y = *(const double*)b;
  return (x > y) - (x < y);
}

static char* readAll(const char* path, size_t* size) {
  FILE* f = fopen(path, "rb");
  if (!f) return NULL;
  fseek(f, 0, SEEK_END);
  long n = ftell(f);
  fseek(f, 0, SEEK_SET);
  char* buffer = malloc((size_t)n + 1);
  if (!buffer || fread(buffer, 1, (size_t)n, f) != (size_t)n) {
    fclose(f);
    free(buffer);
    return NULL;
  }
  fclose(f);
  buffer[n] = '\0';
  *size = (size_t)n;
  return buffer;
}

int main(int argc, char** argv) {
  if (argc < 4) {
    fprintf(stderr, "usage: %s FRISO_INI TEXT RUNS [default|simple|complex]\n", argv[0]);
    return 2;
  }
  const char* ini = argv[1];
  const char* textPath = argv[2];
  int runs = atoi(argv[3]);
  const char* mode = argc > 4 ? argv[4] : "default";
  if (runs < 1) runs = 1;

  size_t bytes = 0;
  char* text = readAll(textPath, &bytes);
  if (!text) {
    fprintf(stderr, "friso-bench: cannot read %s\n", textPath);
    return 2;
  }

  double loadStart = nowMs();
  friso_t friso = friso_new();
  friso_config_t config = friso_new_config();
  /* friso_init_from_ifile takes a mutable string though it only reads it. */
  char* iniCopy = strdup(ini);
  if (friso_init_from_ifile(friso, config, iniCopy) != 1) {
    fprintf(stderr, "friso-bench: friso could not initialise from %s\n", ini);
    return 2;
  }
  double loadMs = nowMs() - loadStart;
  if (strcmp(mode, "simple") == 0) friso_set_mode(config, __FRISO_SIMPLE_MODE__);
  if (strcmp(mode, "complex") == 0) friso_set_mode(config, __FRISO_COMPLEX_MODE__);

  double* times = calloc((size_t)runs, sizeof(double));
  long tokens = 0;
  /* The first pass warms caches and the allocator the same way the other tools' warm-up does. */
  for (int r = -1; r < runs; ++r) {
    friso_task_t task = friso_new_task();
    double start = nowMs();
    friso_set_text(task, text);
    long count = 0;
    while (config->next_token(friso, config, task) != NULL) ++count;
    double elapsed = nowMs() - start;
    friso_free_task(task);
    if (r >= 0) times[r] = elapsed;
    tokens = count;
  }
  qsort(times, (size_t)runs, sizeof(double), compareDoubles);
  double median = runs % 2 ? times[runs / 2] : (times[runs / 2 - 1] + times[runs / 2]) / 2;

  printf("friso mode: %s (config mode %d)\n", mode, (int)config->mode);
  printf("friso load: %.1f ms\n", loadMs);
  printf("friso tokens: %ld\n", tokens);
  printf("friso segment: %.2f MB/s (median of %d runs, %.2f ms per run, %zu UTF-8 bytes)\n",
         (double)bytes / (median / 1e3) / 1e6, runs, median, bytes);

  free(times);
  free(iniCopy);
  friso_free_config(config);
  friso_free(friso);
  free(text);
  return 0;
}
