/* What every page of a wizard has: the data file's commands at its top and its name at the foot.
   Pages are 300 by 200 units. The keys A, B, F, I and N are those of the sheet's own buttons, in
   Italian and in English. */
#ifndef TONVALE_RESOURCES_WIZARD_H
#define TONVALE_RESOURCES_WIZARD_H

#define WIZARD_FILE_BUTTONS                                                                     \
    PUSHBUTTON "A&pri...", CMD_FILE_OPEN, 7, 7, 56, 14, WS_GROUP PUSHBUTTON "&Salva",           \
        CMD_FILE_SAVE, 67, 7, 56, 14 PUSHBUTTON "Sa&lva con nome...", CMD_FILE_SAVE_AS, 127, 7, \
        76, 14 PUSHBUTTON "Sta&mpa", IDC_WIZARD_PRINT, 207, 7, 56, 14

#define WIZARD_FILE_NAME \
    EDITTEXT IDC_WIZARD_FILE, 7, 181, 286, 12, ES_AUTOHSCROLL | ES_READONLY | NOT WS_TABSTOP

#endif
