#include "language/statement.h"

#include "language/words.h"

cStatement::cStatement(std::string statementText) : text(std::move(statementText)), args(tokeniseStatement(text)) {
    if (args.empty()) return;
    keyword = std::move(args.front());
    args.erase(args.begin());
}
