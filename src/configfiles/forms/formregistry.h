#pragma once

#include <QPointer>
#include <QWidget>

// Each window of the program exists once: made on first use, reached from
// anywhere through theForm<T>(), and handing its results back through its
// public fields. unloadForm<T>() destroys it, so that the next use starts
// afresh, as a restart of the start-up sequence needs.

template<typename Form>
QPointer<Form> &formSlot()
{
    static QPointer<Form> slot;
    return slot;
}

template<typename Form>
Form &theForm()
{
    QPointer<Form> &slot = formSlot<Form>();
    if (!slot)
        slot = new Form;
    return *slot;
}

template<typename Form>
bool isFormLoaded()
{
    return !formSlot<Form>().isNull();
}

template<typename Form>
void unloadForm()
{
    QPointer<Form> &slot = formSlot<Form>();
    delete slot.data();
    slot = nullptr;
}
