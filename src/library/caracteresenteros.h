#pragma once

#include <QValidator>

// Keeps a single-line box from holding half a character. A box limited to n
// UTF-16 units cuts what is typed or pasted at the nth unit, which can fall
// between the two halves of a character outside the Basic Multilingual Plane
// (an emoji, say): the half left over is dropped instead of being kept.
class CaracteresEnteros : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString& input, int& pos) const override;
};
