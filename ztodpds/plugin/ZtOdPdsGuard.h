#pragma once

// Runs one of the library's operations for the host and gives its result, or `failure`
// if it throws. The library throws nothing of its own, so what arrives here is a failed
// allocation (or a container grown past its size); it must not reach the host, which
// knows only status codes and null results.
template <class Result, class Operation>
Result ZtOdPdsGuard(Result failure, Operation&& operation) noexcept {
    try {
        return operation();
    } catch (...) {
        return failure;
    }
}
