#include "app/ProcessEnvironment.h"
#include "checkapp/CheckApplication.h"

int main(int argc, char** argv) {
    return ProcessEnvironment::RunMain(argc, argv, "pdscheck", kCheckFailure, RunPdsCheck);
}
