<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <message>
        <source></source>
        <translation>Namenlos</translation>
    </message>
    <message>
        <source>Autumn</source>
        <translation>Herbst</translation>
    </message>
    <message>
        <source>Grün</source>
        <translation>Grünland</translation>
    </message>
    <message>
        <source>Spring</source>
        <translation></translation>
    </message>
</context>
</TS>
