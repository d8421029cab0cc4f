Dies ist kein Programm, sondern die Datei, mit der sich der Abruf eines Updates ausprobieren lässt.
