// What stands around the title's letters: whether it does, and how. Its colour is the colour panel's.
#pragma once

#include "KvTypes.h"
#include "edit/ProjectCommands.h"

#include <QWidget>

class QCheckBox;
class QDoubleSpinBox;
class QGridLayout;

namespace titler {

class Document;

/// A check box that switches an effect, and numbers that are enabled with it.
class EffectInspector : public QWidget
{
    Q_OBJECT

public:
    /// @param nameId the check box's. @param step the name of its step of undo.
    EffectInspector(Document& document, UINT nameId, UINT step);

protected:
    struct Number
    {
        const char* objectName;
        UINT nameId;
        double least;
        double most;
        EditKind kind;
        UINT step;
    };
    /// Adds a field, in percent of the frame's height. @param value where the title keeps it.
    void AddNumber(const Number& number, double& (*value)(Title&));
    void ShowProject();

private:
    virtual bool& IsOn(Title& title) const = 0;

    struct Field
    {
        QDoubleSpinBox* box;
        double& (*value)(Title&);
    };
    Document& m_document;
    QCheckBox* m_on;
    QGridLayout* m_rows;
    QList<Field> m_fields;
};

class OutlineInspector : public EffectInspector
{
    Q_OBJECT

public:
    explicit OutlineInspector(Document& document);

private:
    bool& IsOn(Title& title) const override;
};

class ShadowInspector : public EffectInspector
{
    Q_OBJECT

public:
    explicit ShadowInspector(Document& document);

private:
    bool& IsOn(Title& title) const override;
};

} // namespace titler
