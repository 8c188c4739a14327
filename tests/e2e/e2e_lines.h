/* The lines both test windows show, one sentence a line, in every language the tests read. */
#ifndef VESKO_E2E_LINES_H
#define VESKO_E2E_LINES_H

static const char kE2ELines[] =
    "我们在大学学习中文。\n"
    "毎日ご飯を食べています。\n"
    "Hier, nous sommes allés au marché.\n"
    "ฉันชอบกินข้าว\n"
    "Kiedy dotarł na dworzec, nocny pociąg już odjechał.\n"
    "Книги лежат на столе.";

#endif
