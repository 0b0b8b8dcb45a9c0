#include "platform/embedded/sql/syntax.h"

namespace orva::sql {

Expr::Expr() = default;
Expr::Expr(ExprKind k) : kind(k) {}
Expr::~Expr() = default;

}  // namespace orva::sql
