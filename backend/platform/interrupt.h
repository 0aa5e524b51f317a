// Ctrl-C in a program that goes on behind it.
#pragma once

namespace vexa {

/// From now on an interrupt from the keyboard ends nothing: it is remembered, and `whenInterrupted` is called
/// where signals are handled, so that it may do next to nothing; it may leave by a jump. Null calls nothing.
void catchInterrupts(void (*whenInterrupted)());
/// True from the first `catchInterrupts` on.
[[nodiscard]] bool catchesInterrupts();
/// True when there was an interrupt since the last `forgetInterrupt`; always false before `catchInterrupts`.
[[nodiscard]] bool wasInterrupted();
void forgetInterrupt();

}  // namespace vexa
