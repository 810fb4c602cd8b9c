/* Control, command and resource identifiers, for the resource compiler and the code.
   Dialog templates and menus are named by their words (L"LEPD", L"FILE_OPERATION"). */
#ifndef TONVALE_RESOURCES_RESOURCE_H
#define TONVALE_RESOURCES_RESOURCE_H

/* Children of the main window (the status bar also of every calculator's dialog). */
#define IDC_TOOLBAR 12
#define IDC_REPORT_EDITOR 13
#define IDC_FORMAT_TOOLBAR 14
#define IDC_STATUS_BAR 15
#define IDC_RESULT_VIEW 16

/* Commands of the main menu PRIMO. */
#define CMD_PROTECTOR_SELECTION 40001
#define CMD_HELP_INDEX 40002
#define CMD_PAGE_SETUP 40003
#define CMD_EXIT 40004
#define CMD_NIPTS 40006
#define CMD_HTLA 40007
#define CMD_HTLAN 40008
#define CMD_RISK 40009
#define CMD_PREDICTIONS 40010
#define CMD_DAMAGE_EVOLUTION 40011
#define CMD_AUDIOGRAM_DAMAGE 40012
#define CMD_ABOUT 40013
#define CMD_COPY 40014 /* also of FILE_OPERATION */
#define CMD_VIEW_TABLE 40015
#define CMD_VIEW_AUDIOGRAM 40016
#define CMD_VIEW_CHART 40017
#define CMD_VIEW_DOCUMENT 40018
#define CMD_PRINT 40019
#define CMD_DAILY_EXPOSURE 40020
#define CMD_ATTENUATION_SPECTRUM 40021
#define CMD_GROUP_STATISTICS 40022
#define CMD_WEEKLY_EXPOSURE 40023
#define CMD_PASTE 40024
#define CMD_SAVE_AS 40025
#define CMD_SAVE 40026
#define CMD_CUT 40027
#define CMD_NEW_DOCUMENT 40028
#define CMD_NOISE_SPECTRUM 40029
#define CMD_OPEN 40030
#define CMD_UNCERTAINTY 40034

/* Commands of a calculator's menu FILE_OPERATION. */
#define CMD_FILE_CLOSE 1220
#define CMD_FILE_PRINT 1221
#define CMD_FILE_SAVE_AS 1222
#define CMD_FILE_OPEN 1223
#define CMD_DIALOG_HELP 1224
#define CMD_FILE_SAVE 1225

/* Commands of the menus FORMATO and COLORI. */
#define CMD_BULLETS 32777
#define CMD_COLOR_FIRST 32782
#define CMD_COLOR_LAST 32797
#define CMD_COLOR_AUTOMATIC 32798
#define CMD_BOLD 32799
#define CMD_ITALIC 32800
#define CMD_COLOR_MENU 32801
#define CMD_UNDERLINE 32802
#define CMD_ALIGN_LEFT 32803
#define CMD_ALIGN_CENTER 32804
#define CMD_ALIGN_RIGHT 32805
#define CMD_FONT 32806
#define CMD_SUPERSCRIPT 32808
#define CMD_SUBSCRIPT 32809
#define CMD_WORD_WRAP 32810

/* Controls that several dialogs share. */
#define IDC_ITEM_LIST 1110
#define IDC_LEVEL_EDIT 1111
#define IDC_TIME_LABEL 1112
#define IDC_TIME_EDIT 1113
#define IDC_NOTES_LABEL 1140
#define IDC_NOTES_EDIT 1141
#define IDC_TIME_UNIT 1188
#define IDC_ADD 1210
#define IDC_MODIFY 1211
#define IDC_DELETE 1212
#define IDC_READ_LEVEL 1606

/* What every page of a wizard has besides the buttons of FILE_OPERATION's commands. */
#define IDC_WIZARD_PRINT 1560
#define IDC_WIZARD_FILE 1577

/* The last page of every wizard (with 1141). */
#define IDD_RESULTS_PAGE 107
#define IDC_RESULT_TEXT 1016

/* Groups of workers, LEQGROUP (with 1106, 1110 to 1212 and 1016). */
#define IDC_TOTAL_WORKERS 1567
#define IDC_INTERVAL 1568
#define IDC_CONFIDENCE 1569
#define IDC_STANDARD_DEVIATION 1189
#define IDC_SAMPLE_COUNT 1190

/* Spectra, SPETTRORUM and SPETTRODPI: seven of each, 125 to 8000 Hz. */
#define IDC_BAND_LABEL_FIRST 1151
#define IDC_BAND_FIRST 1161
#define IDC_BAND_LAST 1167
#define IDC_A_WEIGHTED_LEVEL 1106
#define IDC_C_WEIGHTED_LEVEL 1107
#define IDC_DRAWING 1200

/* The choice of a protector (pages 103 to 114, with 1141), its noise and its ratings; the latter
   also of SPETTRODPI. */
#define IDD_OCTAVE_BAND_PAGE 103
#define IDD_HML_CHECK_PAGE 104
#define IDD_HML_PAGE 105
#define IDD_SNR_PAGE 109
#define IDD_CORRECTED_SNR_PAGE 110
#define IDD_QUESTIONS_PAGE 111
#define IDD_METHOD_CHOICE_PAGE 114
#define IDC_METHOD_OCTAVE_BAND 1002
#define IDC_METHOD_HML 1003
#define IDC_METHOD_HML_CHECK 1004
#define IDC_METHOD_SNR 1005
#define IDC_METHOD_CORRECTED_SNR 1006
#define IDC_NOISE_C_LEVEL 1005
#define IDC_NOISE_A_LEVEL 1007
#define IDC_KIND_FIRST 1008 /* four check boxes */
#define IDC_HAS_SPECTRUM 1012
#define IDC_HAS_C_LEVEL 1013
#define IDC_HAS_A_LEVEL 1014
#define IDC_CLASS_HM 1017
#define IDC_CLASS_L 1018
#define IDC_RATING_H 1019
#define IDC_RATING_M 1020
#define IDC_RATING_L 1021
#define IDC_RATING_SNR 1022
#define IDC_ACTION_LEVEL_80 1026
#define IDC_ACTION_LEVEL_85 1027
#define IDC_ACTION_LEVEL_90 1028
#define IDC_IMPORT_NOISE 1029
#define IDC_IMPORT_PROTECTOR 1030
#define IDC_PROTECTOR_BAND_FIRST 1168
#define IDC_PROTECTOR_BAND_LAST 1174
#define IDC_CONDITIONS_YES 1572
#define IDC_CONDITIONS_NO 1573
#define IDC_SHORT_NOISES_YES 1574
#define IDC_SHORT_NOISES_NO 1575

/* Measurement uncertainty (pages 115 to 118 and their item dialogs; with 1105 to 1115, 1188 and
   1210 to 1212). */
#define IDD_UNCERTAINTY_START 115
#define IDD_UNCERTAINTY_LEVEL 116
#define IDD_UNCERTAINTY_DAY 117
#define IDD_UNCERTAINTY_WEEK 118
#define IDC_MEASURED_LEVEL 1007
#define IDC_DURATION_ERROR 1114
#define IDC_REMEMBER 1561
#define IDC_SAMPLED 1572
#define IDC_NOT_SAMPLED 1573
#define IDC_MEASURED_LEVEL_LABEL 1583
#define IDC_INSTRUMENT_ERROR_LABEL 1584
#define IDC_INSTRUMENT_ERROR 1585
#define IDC_TIME_CORRECTION 1586
#define IDC_SAMPLED_TOTAL_TIME_LABEL 1587
#define IDC_SAMPLED_TOTAL_TIME 1588
#define IDC_LEVEL_ERROR 1589
#define IDC_TOTAL_ERROR 1590
#define IDC_GO_ON 1591
#define IDC_MEASURED_GROUP 1592
#define IDC_ERROR_ZERO 1593
#define IDC_ERROR_PERCENTAGE 1594
#define IDC_ERROR_ABSOLUTE 1595
#define IDC_ERROR_PERCENT 1596
#define IDC_ERROR_PERCENT_SPIN 1597
#define IDC_ERROR_MINIMUM 1598
#define IDC_DURATION_ERROR_UNIT 1599
#define IDC_MEMORY_LIST 1602
#define IDC_RECALL 1603

/* The audiogram, CALCOLOILG and EDIT_ILG. The buttons of tables and formulas have the codes of what
   they select (hearing/damage_table.h, hearing/binaural_damage.h). */
#define IDC_DAMAGE 361
#define IDC_LEFT_LOSS 362
#define IDC_RIGHT_LOSS 368
#define IDC_SYMMETRIC 375
#define IDC_FORMULA_INDUSTRY 376
#define IDC_FORMULA_AGRICULTURE 377
#define IDC_FORMULA_GROUP 2841
#define IDC_LOSS_FREQUENCY 2842
#define IDC_RIGHT_LOSS_LABEL 2843

/* The risk of damage, RISK (with 1116 to 1120). The buttons that tabulate it for one age or one
   level, with the value, are hidden. */
#define IDC_FIXED_VALUE 1555
#define IDC_CRITERION_LIST 1134
#define IDC_FIXED_AGE 2806
#define IDC_FIXED_LEVEL 2807

/* LEPD */
#define IDC_TOTAL_TIME_LABEL 1105
#define IDC_EQUIVALENT_LEVEL 1106
#define IDC_TOTAL_TIME 1108
#define IDC_DAILY_LEVEL 1109

/* LEPW and EDIT_LEPW */
#define IDC_DAY_NAME 1113
#define IDC_WEEKLY_LEVEL 1115

/* IDD_ADDENDUM, the notes panel of the file dialogs (with 1140 and 1141). */
#define IDC_MODIFY_NOTES 1023

/* ADDNOTES (with 1141) */
#define IDC_NO_COMMENT 1142

/* The help window. */
#define IDC_HELP_LIST_LABEL 2901
#define IDC_HELP_LIST 2902
#define IDC_HELP_TEXT 2903
#define IDC_HELP_BACK 2904
#define IDC_HELP_FIND_LABEL 2905
#define IDC_HELP_FIND_FIELD 2906
#define IDC_HELP_FIND_NEXT 2907

/* NIPTS, CONFRONTO, RISK and PEPPECUR. The buttons of quantity and damage table have the codes of
   what they select (hearing/threshold_model.h, hearing/damage_table.h). */
#define IDC_FRACTILE_LIST 409
#define IDC_FREQUENCY_LIST 411
#define IDC_MALE 1116
#define IDC_FEMALE 1117
#define IDC_EXPOSURE_YEARS 1118
#define IDC_EXPOSURE_LEVEL 1119
#define IDC_AGE 1120
#define IDC_NIPTS 1125
#define IDC_HTLA 1126
#define IDC_HTLAN 1127
#define IDC_TABLE_NEW 1131
#define IDC_TABLE_OLD 1132
#define IDC_TABLE_BIOLOGICAL 1133
#define IDC_EXPOSURE_YEARS_LABEL 2801
#define IDC_EXPOSURE_LEVEL_LABEL 2802
#define IDC_AGE_LABEL 2803
#define IDC_SEX_GROUP 2804
#define IDC_TABLE_GROUP 2805

/* Other resources. */
#define IDI_TONVALE 1
/* Icons of files, which the installer names by these numbers; in the order of the file kinds. */
#define IDI_FILE_LEPD 2
#define IDI_FILE_LEPW 3
#define IDI_FILE_LEG 4
#define IDI_FILE_ILG 5
#define IDI_FILE_SPR 6
#define IDI_FILE_SPI 7
#define IDI_FILE_DPI 8
#define IDI_FILE_ERR 9
#define IDI_FILE_REPORT 10

#endif
