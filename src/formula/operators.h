// The operators of formulas, as handlers on the evaluation stack. An operator decides by its right
// operand, which is on top; the left one is only turned into what the right one asks for. Numbers
// that come from dates stay dates through addition, subtraction, multiplication, division and
// negation.
#pragma once

namespace vorn {

void operateAdd();
void operateSubtract();
void operateMultiply();
void operateDivide();
void operateNegate();
void operatePower();
void operatePercent();
void operateConcat();
void operateEqual();
void operateLess();
void operateGreater();
void operateLessEqual();
void operateGreaterEqual();
void operateNotEqual();

} // namespace vorn
