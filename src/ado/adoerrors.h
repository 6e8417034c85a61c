#pragma once

// ADO's own error numbers, raised as vb::AutomationError by the data layer.
namespace ado {

constexpr int ErrProvider = -2147467259;      // E_FAIL: the database refused the statement
constexpr int ErrItemNotFound = 3265;         // no field of that name or ordinal
constexpr int ErrBofOrEof = 3021;             // no current record
constexpr int ErrObjectClosed = 3704;         // operation not allowed when closed
constexpr int ErrObjectOpen = 3705;           // operation not allowed when open
constexpr int ErrConnectionUnusable = 3709;   // connection closed or invalid

} // namespace ado
