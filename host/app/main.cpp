#include "app/Application.h"

int main(int argc, char** argv) {
    return RunPdsReview(argc, argv);
}
