#include "app/Application.h"

int RunPdsReview(int, char**) { return 0; }
