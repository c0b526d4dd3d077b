' Report of a sweep: an RC low-pass over frequency, drawn with characters.
'
' Report returns the text; a host shows it where it likes.
Option Explicit

Const PI = 3.14159265358979
Const COLUMNS = 48		' width of the drawing
Const DB_FLOOR = -60

Class Filter
	Private m_R, m_C
	Public Name

	Public Sub Init(sName, dR, dC)
		Name = sName
		m_R = dR : m_C = dC		: Rem ohms and farads
	End Sub

	Public Property Get Corner
		Corner = 1 / (2 * PI * m_R * m_C)
	End Property

	' Attenuation in decibels at frequency f, never positive
	Public Function Gain(f)
		Dim x
		x = f / Corner
		Gain = -10 * Log(1 + x ^ 2) / Log(10)
	End Function

	Public Function Phase(f)
		Phase = -Atn(f / Corner) * 180 / PI
	End Function
End Class

' A number with its engineering suffix: 4700 is "4.70k"
Function Engineering(ByVal dValue, sUnit)
	Dim aNames, i
	aNames = Array("p", "n", "u", "m", "", "k", "meg", "g")
	i = 4
	Do While Abs(dValue) >= 1000 And i < UBound(aNames)
		dValue = dValue / 1000 : i = i + 1
	Loop
	Do While Abs(dValue) < 1 And dValue <> 0 And i > 0
		dValue = dValue * 1000 : i = i - 1
	Loop
	Engineering = FormatNumber(dValue, 2) & aNames(i) & sUnit
End Function

' The number at the head of a text such as "4.7k" or "100nF"; Empty if there is none
Function ParseValue(sText)
	Dim re, oMatches, sSuffix
	Set re = New RegExp
	re.Pattern = "^\s*([-+]?[0-9.]+(e[-+]?\d+)?)(meg|[pnumkg])?"
	re.IgnoreCase = True
	Set oMatches = re.Execute(sText)
	If oMatches.Count = 0 Then Exit Function

	sSuffix = LCase(oMatches(0).SubMatches(2))
	ParseValue = CDbl(oMatches(0).SubMatches(0))
	Select Case sSuffix
		Case "p" : ParseValue = ParseValue * 1E-12
		Case "n" : ParseValue = ParseValue * 1E-9
		Case "u" : ParseValue = ParseValue * 1E-6
		Case "m" : ParseValue = ParseValue * 1E-3
		Case "k" : ParseValue = ParseValue * 1000
		Case "meg" : ParseValue = ParseValue * 1E+6
		Case "g" : ParseValue = ParseValue * &H3B9ACA00	' 10 ^ 9
	End Select
End Function

Function PadLeft(s, n)
	PadLeft = Right(Space(n) & s, n)
End Function

Rem One line of the drawing: the frequency, the values, and a bar that
Rem is full at 0 dB and empty at DB_FLOOR, "o" at its end.
Function Line(oFilter, f)
	Dim nBar
	nBar = Int(COLUMNS * (1 - oFilter.Gain(f) / DB_FLOOR) + 0.5)
	If nBar < 0 Then nBar = 0
	Line = PadLeft(Engineering(f, "Hz"), 12) & _
		PadLeft(FormatNumber(oFilter.Gain(f), 1), 8) & _
		PadLeft(FormatNumber(oFilter.Phase(f), 1), 8) & "  |" & String(nBar, "=") & "o"
End Function

Function Report(sName, sR, sC)
	Dim oFilter, sText, nDecade, vStep
	Set oFilter = New Filter
	oFilter.Init sName, ParseValue(sR), ParseValue(sC)

	sText = "Sweep of """ & oFilter.Name & """: R = " & sR & ", C = " & sC & vbCrLf
	sText = sText & "Corner at " & Engineering(oFilter.Corner, "Hz") & ", it's -3 dB there" & vbCrLf & vbCrLf
	sText = sText & PadLeft("frequency", 12) & PadLeft("dB", 8) & PadLeft("deg", 8) & vbCrLf
	For nDecade = 1 To 6
		For Each vStep In Array(1, 2, 5)
			sText = sText & Line(oFilter, vStep * 10 ^ nDecade) & vbCrLf
		Next
	Next
	If Date < #1/1/2000# Then sText = sText & "The clock is wrong." & vbCrLf
	Report = sText
End Function

Dim sResult
On Error Resume Next
sResult = Report("input filter", "4.7k", "3.3nF")
If Err.Number <> 0 Then
	sResult = "Error " & Hex(Err.Number) & ": " & Err.Description
	Err.Clear
End If
On Error GoTo 0
