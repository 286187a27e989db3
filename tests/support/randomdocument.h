// Documents by chance, with all that a document can hold: every kind of cell, shared code and
// texts, names that call names and themselves, tasks, filters, looks, views.
#pragma once

#include "support/dice.h"

namespace vorn {

// Puts a random document in place of the one that stands. Nothing in it is calculated: the results
// of formulas are by chance as well.
void makeRandomDocument(Dice& dice);

} // namespace vorn
